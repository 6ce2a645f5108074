// media/numbered_files.h — numbered files that appear under their names only when all are there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "media/input_path.h"
#include "media/temporary_folder.h"

namespace media {

/// Kept in a hidden folder beside their place, which goes with all in it unless finish() succeeds.
class NumberedFiles {
 public:
  /// `path` follows numberPattern(). Throws Error: exists (any file of the pattern, without
  /// `overwrite`), unwritable.
  NumberedFiles(const std::string& path, int firstNumber, bool overwrite);

  /// Writes the next file. Throws Error: diskFull, writeFailed.
  void add(const std::uint8_t* data, std::size_t size);

  /// Moves all into place. Throws Error: exists, writeFailed.
  void finish();

 private:
  std::filesystem::path folder_;
  NumberPattern pattern_;
  int number_;
  bool overwrite_;
  std::optional<TemporaryFolder> temporary_;
  std::vector<std::string> names_;
};

}  // namespace media
