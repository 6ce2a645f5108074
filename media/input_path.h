// media/input_path.h — what the user named as input: a file, numbered pictures, a folder of them.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace media {

struct InputPath {
  std::string url;        ///< for FFmpeg's opener
  bool sequence = false;  ///< numbered pictures, to be opened with the image2 demuxer
  bool glob = false;      ///< `url` holds wildcards
  int firstNumber = 0;
  std::vector<std::string> warnings;
};

/// A printf-like number in a file name: "shot.%05d.png" is {"shot.", 5, ".png"}.
struct NumberPattern {
  std::string prefix;
  int digits = 0;  ///< least digits, zero padded; 0 for "%d"
  std::string suffix;

  std::string fileName(int number) const;
  /// The number in `name`, if it follows the pattern.
  std::optional<int> numberOf(const std::string& name) const;
};

/// The pattern in a file name (no folders), if it has exactly one "%d" or "%0Nd". "%%" is a
/// percent sign.
std::optional<NumberPattern> numberPattern(const std::string& fileName);

/// Throws Error: missing (nothing there, a hint if a folder holds no pictures), empty (a file of
/// no bytes).
InputPath resolveInput(const std::string& path, std::optional<int> startNumber);

}  // namespace media
