// stats/pixel_buffer.h — a frame's pixels as the walk reads them.
#pragma once

#include <cstddef>
#include <cstdint>

namespace varilum {

enum class PixelDepth : std::uint8_t { bits8, bits16, float32 };

// Bytes of one pixel: four channels, alpha first, then red, green, blue.
constexpr int pixelBytes(PixelDepth depth) noexcept {
  return depth == PixelDepth::float32 ? 16 : depth == PixelDepth::bits16 ? 8 : 4;
}

// A view of somebody else's pixels. data is the first pixel of the top row; null = no pixels.
struct PixelBuffer {
  const void* data = nullptr;
  std::ptrdiff_t rowBytes = 0;  // from a row to the one below; may be padded, may be negative
  std::int32_t width = 0;
  std::int32_t height = 0;
  PixelDepth depth = PixelDepth::bits8;
};

// The view of a host image under the depth that the flags claim. A depth that a row of rowBytes
// cannot hold is ignored in favour of the next lower one; when none fits, data is null.
PixelBuffer viewPixels(const void* data, std::int32_t rowBytes, std::int32_t width,
                       std::int32_t height, bool isFloat, bool isDeep) noexcept;

}  // namespace varilum
