// media/temporary_folder.h — a hidden folder for what is being made.
#pragma once

#include <filesystem>
#include <string>

namespace media {

/// A folder of its own beside the final place, removed with all in it at the end. Those that killed
/// runs left for the same name go too.
class TemporaryFolder {
 public:
  /// Throws Error{unwritable}.
  TemporaryFolder(const std::filesystem::path& beside, const std::string& name);
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  const std::filesystem::path& path() const noexcept { return path_; }

 private:
  std::filesystem::path path_;
  int descriptor_ = -1;
};

}  // namespace media
