// tests/cli/scratch_folder.h — a folder of its own for each test, gone afterwards.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace cli::test {

class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::filesystem::path& path() const noexcept { return path_; }
  /// The full name of a file in it.
  std::string operator/(const std::string& name) const { return (path_ / name).string(); }
  /// Names in it, hidden ones too, sorted.
  std::vector<std::string> names() const;

 private:
  std::filesystem::path path_;
};

std::string readFile(const std::string& path);
void writeFile(const std::string& path, const std::string& bytes);

}  // namespace cli::test
