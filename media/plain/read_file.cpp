// media/plain/read_file.cpp — an open file, read from any place.
#include "media/plain/read_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include "media/error.h"
#include "media/system_file.h"

namespace media {

ReadFile::ReadFile(const std::filesystem::path& path) : path_(path), descriptor_(openFile(path)) {
  if (descriptor_ < 0) {
    const std::string why = errno == EACCES ? " may not be read; check its permissions."
                                            : std::string(": ") + std::strerror(errno) + ".";
    throw Error(Problem::missing, path.string() + why);
  }
  size_ = seekFile(descriptor_, 0, SEEK_END);
}

ReadFile::~ReadFile() {
  closeFile(descriptor_);
}

std::size_t ReadFile::read(std::int64_t offset, void* data, std::size_t size) const {
  if (seekFile(descriptor_, offset, SEEK_SET) < 0) return 0;
  std::size_t done = 0;
  while (done < size) {
    const std::int64_t got = readSome(descriptor_, static_cast<char*>(data) + done, size - done);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) {
      throw Error(Problem::damaged,
                  path_.string() + " cannot be read: " + std::strerror(errno) + ".");
    }
    if (got == 0) break;
    done += static_cast<std::size_t>(got);
  }
  return done;
}

}  // namespace media
