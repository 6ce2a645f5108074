// cli/output_file.cpp — a file that appears under its name only when it is whole.
#include "cli/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <system_error>

#include <fmt/format.h>

#include "cli/error.h"

namespace cli {
namespace {

std::filesystem::path folderOf(const std::filesystem::path& path) {
  const auto folder = path.parent_path();
  return folder.empty() ? std::filesystem::path(".") : folder;
}

[[noreturn]] void fail(const std::filesystem::path& path, int error) {
  if (error == ENOSPC || error == EDQUOT) {
    throw Failure(
        fmt::format("The disk is full: {} could not be written. Free some space or write "
                    "to another disk.",
                    path.string()));
  }
  throw Failure(fmt::format("{} could not be written: {}.", path.string(), std::strerror(error)));
}

}  // namespace

void requireWritable(const std::filesystem::path& path, bool force) {
  std::error_code ignored;
  const auto status = std::filesystem::status(path, ignored);
  if (std::filesystem::is_directory(status)) {
    throw Failure(fmt::format("{} is a folder; give a file name.", path.string()));
  }
  if (std::filesystem::exists(status) && !force) {
    throw Failure(
        fmt::format("{} is there already; choose another name, or add --force to "
                    "replace it.",
                    path.string()));
  }
  const auto folder = folderOf(path);
  if (!std::filesystem::is_directory(folder, ignored)) {
    throw Failure(fmt::format("There is no folder {}; make it, or write {} elsewhere.",
                              folder.string(), path.filename().string()));
  }
  if (::access(folder.c_str(), W_OK | X_OK) != 0) {
    throw Failure(
        fmt::format("The folder {} may not be written to; choose another.", folder.string()));
  }
}

OutputFile::OutputFile(std::filesystem::path path, bool force)
    : path_(std::move(path)), force_(force) {
  requireWritable(path_, force);
  temporary_ = folderOf(path_) / fmt::format(".{}.{}.part{}", path_.stem().string(), ::getpid(),
                                             path_.extension().string());
  descriptor_ = ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (descriptor_ < 0) fail(path_, errno);
}

OutputFile::~OutputFile() {
  if (descriptor_ < 0) return;
  ::close(descriptor_);
  ::unlink(temporary_.c_str());
}

void OutputFile::write(std::span<const std::byte> bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
    if (written < 0) {
      if (errno == EINTR) continue;
      fail(path_, errno);
    }
    bytes = bytes.subspan(static_cast<std::size_t>(written));
  }
}

void OutputFile::commit() {
  requireWritable(path_, force_);
  if (::fsync(descriptor_) != 0 && errno != EINVAL && errno != EROFS) fail(path_, errno);
  if (::rename(temporary_.c_str(), path_.c_str()) != 0) fail(path_, errno);
  ::close(descriptor_);
  descriptor_ = -1;
}

}  // namespace cli
