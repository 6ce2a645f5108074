// cli/output_file.cpp — a file that appears under its name only when it is whole.
#include "cli/output_file.h"

#include <fmt/format.h>

#include <system_error>

#include "cli/error.h"
#include "media/folder_of.h"
#include "media/system_file.h"

namespace cli {
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
  const auto folder = media::folderOf(path);
  if (!std::filesystem::is_directory(folder, ignored)) {
    throw Failure(fmt::format("There is no folder {}; make it, or write {} elsewhere.",
                              folder.string(), path.filename().string()));
  }
  if (media::mayWriteTo(folder) != 0) {
    throw Failure(
        fmt::format("The folder {} may not be written to; choose another.", folder.string()));
  }
}

OutputFile::OutputFile(std::filesystem::path path, bool force)
    : path_(std::move(path)), force_(force), file_((requireWritable(path_, force), path_), force) {
  file_.removeRemains();
}

void OutputFile::write(std::span<const std::byte> bytes) {
  const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
  if (!file_.write(data, bytes.size())) media::throwWriteError(path_, file_.errorCode());
}

void OutputFile::commit() {
  requireWritable(path_, force_);
  file_.commit();
}

}  // namespace cli
