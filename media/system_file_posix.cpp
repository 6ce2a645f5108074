// media/system_file_posix.cpp — files on POSIX systems.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "media/system_file.h"

namespace media {

int makeFile(const std::filesystem::path& path) noexcept {
  return ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
}

int openFolder(const std::filesystem::path& path) noexcept {
  return ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

int openFile(const std::filesystem::path& path) noexcept {
  return ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
}

std::int64_t readSome(int descriptor, void* data, std::size_t size) noexcept {
  return ::read(descriptor, data, size);
}

std::int64_t writeSome(int descriptor, const void* data, std::size_t size) noexcept {
  return ::write(descriptor, data, size);
}

std::int64_t seekFile(int descriptor, std::int64_t offset, int whence) noexcept {
  return ::lseek(descriptor, offset, whence);
}

int syncFile(int descriptor) noexcept {
  return ::fsync(descriptor);
}

int closeFile(int descriptor) noexcept {
  return ::close(descriptor);
}

void removeFile(const std::filesystem::path& path) noexcept {
  ::unlink(path.c_str());
}

int renameFile(const std::filesystem::path& from, const std::filesystem::path& to,
               bool overwrite) noexcept {
  const unsigned flags = overwrite ? 0U : static_cast<unsigned>(RENAME_NOREPLACE);
  const int result = ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), flags);
  if (result == 0 || errno != EINVAL || overwrite) return result;
  // A file system without such a rename.
  std::error_code status;
  if (std::filesystem::exists(to, status)) {
    errno = EEXIST;
    return -1;
  }
  return std::rename(from.c_str(), to.c_str());
}

int mayWriteTo(const std::filesystem::path& folder) noexcept {
  return ::access(folder.c_str(), W_OK | X_OK);
}

bool markInUse(int descriptor) noexcept {
  ::flock(descriptor, LOCK_EX | LOCK_NB);
  struct stat status = {};
  return ::fstat(descriptor, &status) != 0 || status.st_nlink > 0;
}

// Only what this process could lock is nobody's.
bool isAbandoned(const std::filesystem::path& path) noexcept {
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return false;
  const bool abandoned = ::flock(descriptor, LOCK_EX | LOCK_NB) == 0;
  ::close(descriptor);
  return abandoned;
}

bool isDiskFull(int code) noexcept {
  return code == ENOSPC || code == EDQUOT || code == EFBIG;
}

int processId() noexcept {
  return static_cast<int>(::getpid());
}

}  // namespace media
