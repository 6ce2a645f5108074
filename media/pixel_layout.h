// media/pixel_layout.h — where a pixel format keeps its components.
#pragma once

#include <array>
#include <cstdint>

#include "media/argb_view.h"

namespace media {

/// value / 2^shift, rounded up: the size of a subsampled plane.
constexpr int ceilShift(int value, int shift) noexcept {
  return -((-value) >> shift);
}

/// One component of a pixel format: element i of a row starts at byte offset + i * step.
struct ComponentLayout {
  int plane = 0;
  int step = 1;
  int offset = 0;
  int shift = 0;         ///< bits below the value in its word
  int depth = 8;         ///< bits of the value; 32 for float
  int bytes = 1;         ///< of the word: 1, 2 or 4 (float)
  bool swapped = false;  ///< big-endian word
  bool shared = false;   ///< its word holds bits of other components too

  std::uint32_t maximum() const noexcept { return (1U << depth) - 1U; }
};

struct PixelLayout {
  enum class Family { grey, rgb, yuv };
  Family family = Family::rgb;
  int colours = 3;  ///< 1 for grey, else 3
  bool hasAlpha = false;
  bool isFloat = false;
  int depth = 8;             ///< of the deepest component
  int chromaWidthShift = 0;  ///< log2 of luma columns per chroma column
  int chromaHeightShift = 0;
  std::array<ComponentLayout, 4> components{};  ///< red/luma, green/Cb, blue/Cr, alpha

  Depth workingDepth() const noexcept {
    return isFloat ? Depth::floating : depth > 8 ? Depth::sixteen : Depth::eight;
  }
};

}  // namespace media
