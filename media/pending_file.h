// media/pending_file.h — an output file that only gets its name when it is whole.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

namespace media {

/// Throws Error for a failed write to `path`: diskFull for a full disk, quota or size limit, else
/// writeFailed. `code` is an errno.
[[noreturn]] void throwWriteError(const std::filesystem::path& path, int code);

/// Throws Error: exists (a file, and no overwriting), unwritable (no such folder, no permission, or
/// something other than a file stands there).
void requireWritable(const std::filesystem::path& path, bool overwrite);

/// Moves `from` to `to`, in place of an existing file only if `overwrite`.
/// Throws Error: exists, writeFailed.
void moveIntoPlace(const std::filesystem::path& from, const std::filesystem::path& to,
                   bool overwrite);

/// Opened as ".<name>.part-<pid>-<serial>.<ext>" beside `path`; removed again unless commit()
/// succeeds.
class PendingFile {
 public:
  /// Throws as requireWritable() does, before anything is made.
  PendingFile(const std::filesystem::path& path, bool overwrite);
  ~PendingFile();
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;

  /// Removes what killed runs of the same path have left.
  void removeRemains() const;
  /// False after a failure, which errorCode() then tells; all later writes fail too.
  bool write(const std::uint8_t* data, std::size_t size) noexcept;
  /// As lseek; negative after a failure.
  std::int64_t seek(std::int64_t offset, int whence) noexcept;
  std::int64_t size() const noexcept;
  int errorCode() const noexcept { return error_; }
  const std::filesystem::path& path() const noexcept { return path_; }
  const std::filesystem::path& temporary() const noexcept { return temporary_; }

  /// Flushes to the disk and gives the file its name. Throws Error: diskFull, writeFailed, exists.
  void commit();

 private:
  std::filesystem::path path_;
  std::filesystem::path temporary_;
  bool overwrite_;
  int descriptor_ = -1;
  int error_ = 0;
};

}  // namespace media
