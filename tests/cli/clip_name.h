// tests/cli/clip_name.h — names for clips in a format that loses nothing.
#pragma once

#include <string>

namespace cli::test {

/// "in" becomes in.mkv, which ffmpeg fills with FFV1, or in.y4m in a build without FFmpeg.
inline std::string clip(const std::string& stem) {
#ifdef VARILUM_PLAIN_FOOTAGE
  return stem + ".y4m";
#else
  return stem + ".mkv";
#endif
}

}  // namespace cli::test
