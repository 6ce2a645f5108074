// media/plain/read_file.h — an open file, read from any place.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>

namespace media {

class ReadFile {
 public:
  /// Throws Error{missing}.
  explicit ReadFile(const std::filesystem::path& path);
  ~ReadFile();
  ReadFile(const ReadFile&) = delete;
  ReadFile& operator=(const ReadFile&) = delete;

  const std::filesystem::path& path() const noexcept { return path_; }
  std::int64_t size() const noexcept { return size_; }

  /// Bytes from `offset` on into `data`: as many as there are, `size` at most. Throws
  /// Error{damaged} when the disk fails.
  std::size_t read(std::int64_t offset, void* data, std::size_t size) const;

 private:
  std::filesystem::path path_;
  int descriptor_;
  std::int64_t size_ = 0;
};

}  // namespace media
