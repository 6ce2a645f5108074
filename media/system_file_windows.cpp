// media/system_file_windows.cpp — files on Windows.
#include <fcntl.h>
#include <io.h>
#include <process.h>
#include <sys/stat.h>
#include <windows.h>

#include <algorithm>
#include <cerrno>

#include "media/system_file.h"

namespace media {
namespace {

constexpr std::size_t kMostAtOnce = 1U << 30;  // counts are 32 bits

int errnoOf(DWORD error) noexcept {
  switch (error) {
    case ERROR_ALREADY_EXISTS:
    case ERROR_FILE_EXISTS:
      return EEXIST;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
      return ENOENT;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return ENOSPC;
    default:
      return EACCES;
  }
}

}  // namespace

int makeFile(const std::filesystem::path& path) noexcept {
  return ::_wopen(path.c_str(), _O_RDWR | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT,
                  _S_IREAD | _S_IWRITE);
}

int openFolder(const std::filesystem::path& path) noexcept {
  HANDLE folder = CreateFileW(path.c_str(), FILE_LIST_DIRECTORY,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                              OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (folder == INVALID_HANDLE_VALUE) return -1;
  return ::_open_osfhandle(reinterpret_cast<std::intptr_t>(folder), _O_RDONLY);
}

int openFile(const std::filesystem::path& path) noexcept {
  return ::_wopen(path.c_str(), _O_RDONLY | _O_BINARY | _O_NOINHERIT);
}

std::int64_t readSome(int descriptor, void* data, std::size_t size) noexcept {
  return ::_read(descriptor, data, static_cast<unsigned>(std::min(size, kMostAtOnce)));
}

std::int64_t writeSome(int descriptor, const void* data, std::size_t size) noexcept {
  return ::_write(descriptor, data, static_cast<unsigned>(std::min(size, kMostAtOnce)));
}

std::int64_t seekFile(int descriptor, std::int64_t offset, int whence) noexcept {
  return ::_lseeki64(descriptor, offset, whence);
}

int syncFile(int descriptor) noexcept {
  return ::_commit(descriptor);
}

int closeFile(int descriptor) noexcept {
  return ::_close(descriptor);
}

void removeFile(const std::filesystem::path& path) noexcept {
  ::_wunlink(path.c_str());
}

int renameFile(const std::filesystem::path& from, const std::filesystem::path& to,
               bool overwrite) noexcept {
  if (MoveFileExW(from.c_str(), to.c_str(), overwrite ? MOVEFILE_REPLACE_EXISTING : 0U) != 0) {
    return 0;
  }
  errno = errnoOf(GetLastError());
  return -1;
}

int mayWriteTo(const std::filesystem::path& folder) noexcept {
  constexpr int kWrite = 2;
  return ::_waccess(folder.c_str(), kWrite);
}

// What is open is in use.
bool markInUse(int /*descriptor*/) noexcept {
  return true;
}

bool isAbandoned(const std::filesystem::path& path) noexcept {
  HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                            FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  CloseHandle(file);
  return true;
}

bool isDiskFull(int code) noexcept {
  return code == ENOSPC || code == EFBIG;
}

int processId() noexcept {
  return ::_getpid();
}

}  // namespace media
