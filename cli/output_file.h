// cli/output_file.h — a file that appears under its name only when it is whole.
#pragma once

#include <cstddef>
#include <filesystem>
#include <span>

namespace cli {

/// Throws Failure when `path` is there and `force` is off, or when its folder is missing or may not
/// be written to. To be asked before long work starts.
void requireWritable(const std::filesystem::path& path, bool force);

/// A name beside the final one (hidden, same extension) to write to. commit() renames; without it
/// the destructor removes what was written.
class OutputFile {
 public:
  OutputFile(std::filesystem::path path, bool force);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  const std::filesystem::path& temporary() const noexcept { return temporary_; }

  /// Adds to the end of the temporary file. Throws Failure, naming the final file.
  void write(std::span<const std::byte> bytes);
  /// Throws Failure; then nothing is left over.
  void commit();

 private:
  std::filesystem::path path_;
  std::filesystem::path temporary_;
  bool force_;
  int descriptor_ = -1;
};

}  // namespace cli
