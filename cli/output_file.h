// cli/output_file.h — a file that appears under its name only when it is whole.
#pragma once

#include <cstddef>
#include <filesystem>
#include <span>

#include "media/pending_file.h"

namespace cli {

/// Throws Failure when `path` is there and `force` is off, or when its folder is missing or may not
/// be written to. To be asked before long work starts.
void requireWritable(const std::filesystem::path& path, bool force);

/// A name beside the final one (hidden, same extension) to write to. commit() renames; without it
/// the destructor removes what was written.
class OutputFile {
 public:
  /// Throws Failure as requireWritable() does, and media::Error when no file can be made there.
  OutputFile(std::filesystem::path path, bool force);

  const std::filesystem::path& temporary() const noexcept { return file_.temporary(); }

  /// Adds to the end of the temporary file. Throws media::Error, naming the final file.
  void write(std::span<const std::byte> bytes);
  /// Throws Failure or media::Error; then nothing is left over.
  void commit();

 private:
  std::filesystem::path path_;
  bool force_;
  media::PendingFile file_;
};

}  // namespace cli
