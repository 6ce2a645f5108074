// media/pending_file.cpp — an output file that only gets its name when it is whole.
#include "media/pending_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "media/error.h"
#include "media/remains.h"

namespace media {
namespace {

namespace fs = std::filesystem;

fs::path folderOf(const fs::path& path) {
  return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

// A link is written through, not replaced.
fs::path throughLinks(const fs::path& path) {
  std::error_code status;
  if (!fs::is_symlink(path, status)) return path;
  const fs::path target = fs::canonical(path, status);
  return status ? path : target;
}

}  // namespace

void throwWriteError(const fs::path& path, int code) {
  if (code == ENOSPC || code == EDQUOT || code == EFBIG) {
    throw Error(Problem::diskFull, "There is no space left to write " + path.string() +
                                       "; nothing was left behind. Free some space and try again.");
  }
  throw Error(Problem::writeFailed,
              path.string() + " could not be written: " + std::strerror(code) + ".");
}

void requireWritable(const fs::path& path, bool overwrite) {
  if (!path.has_filename()) {
    throw Error(Problem::unwritable, "\"" + path.string() + "\" does not name an output file.");
  }
  std::error_code status;
  const fs::path folder = folderOf(path);
  if (!fs::is_directory(folder, status)) {
    throw Error(Problem::unwritable,
                "There is no folder " + folder.string() + " to write to; make it first.");
  }
  if (fs::exists(path, status)) {
    if (!fs::is_regular_file(path, status)) {
      throw Error(Problem::unwritable,
                  path.string() + " is not a file; name a file to write the clip to.");
    }
    if (!overwrite) {
      throw Error(Problem::exists,
                  path.string() + " exists already; choose another name or allow replacing it.");
    }
  }
  if (access(folder.c_str(), W_OK | X_OK) != 0) {
    throw Error(Problem::unwritable, "The folder " + folder.string() +
                                         " may not be written to: " + std::strerror(errno) + ".");
  }
}

void moveIntoPlace(const fs::path& from, const fs::path& to, bool overwrite) {
  const unsigned flags = overwrite ? 0U : static_cast<unsigned>(RENAME_NOREPLACE);
  int result = renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), flags);
  if (result != 0 && errno == EINVAL && !overwrite) {  // a file system without such a rename
    std::error_code status;
    if (fs::exists(to, status)) {
      errno = EEXIST;
    } else {
      result = std::rename(from.c_str(), to.c_str());
    }
  }
  if (result == 0) return;
  if (errno == EEXIST) {
    throw Error(Problem::exists,
                to.string() + " has come into being meanwhile; it was not replaced.");
  }
  throwWriteError(to, errno);
}

PendingFile::PendingFile(const fs::path& path, bool overwrite)
    : path_(throughLinks(path)), overwrite_(overwrite) {
  requireWritable(path_, overwrite);
  do {
    temporary_ = folderOf(path_) / temporaryName(path_.stem().string(), path_.extension().string());
    descriptor_ = open(temporary_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor_ >= 0) {
      if (markInUse(descriptor_)) return;
      close(descriptor_);
      errno = EEXIST;
    }
    // A killed run of the same process number may have left this name; the next is another.
  } while (errno == EEXIST);
  const int code = errno;
  if (code == ENOSPC || code == EDQUOT) throwWriteError(path_, code);
  throw Error(Problem::unwritable, "The folder " + folderOf(path_).string() +
                                       " may not be written to: " + std::strerror(code) + ".");
}

PendingFile::~PendingFile() {
  if (descriptor_ >= 0) close(descriptor_);
  if (!temporary_.empty()) unlink(temporary_.c_str());
}

void PendingFile::removeRemains() const {
  media::removeRemains(folderOf(path_), path_.stem().string());
}

bool PendingFile::write(const std::uint8_t* data, std::size_t size) noexcept {
  while (size > 0 && error_ == 0) {
    const ssize_t written = ::write(descriptor_, data, size);
    if (written < 0) {
      if (errno != EINTR) error_ = errno;
      continue;
    }
    data += written;
    size -= static_cast<std::size_t>(written);
  }
  return error_ == 0;
}

std::int64_t PendingFile::seek(std::int64_t offset, int whence) noexcept {
  const off_t position = lseek(descriptor_, offset, whence);
  if (position < 0 && error_ == 0) error_ = errno;
  return position;
}

std::int64_t PendingFile::size() const noexcept {
  struct stat status = {};
  return fstat(descriptor_, &status) == 0 ? status.st_size : -1;
}

void PendingFile::commit() {
  if (error_ == 0 && fsync(descriptor_) != 0 && errno != EINVAL) error_ = errno;
  const int closed = close(descriptor_);
  descriptor_ = -1;
  if (error_ == 0 && closed != 0) error_ = errno;
  if (error_ != 0) throwWriteError(path_, error_);
  moveIntoPlace(temporary_, path_, overwrite_);
  temporary_.clear();
}

}  // namespace media
