// media/pending_file.cpp — an output file that only gets its name when it is whole.
#include "media/pending_file.h"

#include <cerrno>
#include <cstring>

#include "media/error.h"
#include "media/folder_of.h"
#include "media/remains.h"
#include "media/system_file.h"

namespace media {
namespace {

namespace fs = std::filesystem;

// A link is written through, not replaced.
fs::path throughLinks(const fs::path& path) {
  std::error_code status;
  if (!fs::is_symlink(path, status)) return path;
  const fs::path target = fs::canonical(path, status);
  return status ? path : target;
}

}  // namespace

void throwWriteError(const fs::path& path, int code) {
  if (isDiskFull(code)) {
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
  if (mayWriteTo(folder) != 0) {
    throw Error(Problem::unwritable, "The folder " + folder.string() +
                                         " may not be written to: " + std::strerror(errno) + ".");
  }
}

void moveIntoPlace(const fs::path& from, const fs::path& to, bool overwrite) {
  if (renameFile(from, to, overwrite) == 0) return;
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
    descriptor_ = makeFile(temporary_);
    if (descriptor_ >= 0) {
      if (markInUse(descriptor_)) return;
      closeFile(descriptor_);
      errno = EEXIST;
    }
    // A killed run of the same process number may have left this name; the next is another.
  } while (errno == EEXIST);
  const int code = errno;
  if (isDiskFull(code)) throwWriteError(path_, code);
  throw Error(Problem::unwritable, "The folder " + folderOf(path_).string() +
                                       " may not be written to: " + std::strerror(code) + ".");
}

PendingFile::~PendingFile() {
  if (descriptor_ >= 0) closeFile(descriptor_);
  if (!temporary_.empty()) removeFile(temporary_);
}

void PendingFile::removeRemains() const {
  media::removeRemains(folderOf(path_), path_.stem().string());
}

bool PendingFile::write(const std::uint8_t* data, std::size_t size) noexcept {
  while (size > 0 && error_ == 0) {
    const std::int64_t written = writeSome(descriptor_, data, size);
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
  const std::int64_t position = seekFile(descriptor_, offset, whence);
  if (position < 0 && error_ == 0) error_ = errno;
  return position;
}

std::int64_t PendingFile::size() const noexcept {
  std::error_code status;
  const std::uintmax_t bytes = fs::file_size(temporary_, status);
  return status ? -1 : static_cast<std::int64_t>(bytes);
}

void PendingFile::commit() {
  if (error_ == 0 && syncFile(descriptor_) != 0 && errno != EINVAL) error_ = errno;
  const int closed = closeFile(descriptor_);
  descriptor_ = -1;
  if (error_ == 0 && closed != 0) error_ = errno;
  if (error_ != 0) throwWriteError(path_, error_);
  moveIntoPlace(temporary_, path_, overwrite_);
  temporary_.clear();
}

}  // namespace media
