// fuzz/small_clip.h — a clip of a few tiny pictures, to have something to open.
#pragma once

#include <fstream>
#include <stdexcept>
#include <string>

namespace fuzz {

inline constexpr int kSmallClipSide = 16;  // pixels
inline constexpr int kSmallClipFrames = 4;

// Uncompressed grey pictures of different brightness. Throws std::runtime_error.
inline void writeSmallClip(const std::string& path) {
  std::ofstream file(path, std::ios::binary);
  file << "YUV4MPEG2 W" << kSmallClipSide << " H" << kSmallClipSide << " F25:1 Ip A1:1 C420jpeg\n";
  for (int frame = 0; frame < kSmallClipFrames; ++frame) {
    file << "FRAME\n";
    for (int i = 0; i < kSmallClipSide * kSmallClipSide; ++i) {
      file.put(static_cast<char>(40 + i % 64 + frame % 2 * 40));
    }
    file << std::string(kSmallClipSide * kSmallClipSide / 2, '\x80');
  }
  if (!file.flush()) throw std::runtime_error("cannot write " + path);
}

}  // namespace fuzz
