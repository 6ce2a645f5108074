// stats/pixel_buffer.cpp — which depth a host image's rows can hold.
#include "stats/pixel_buffer.h"

#include <cstdlib>

namespace varilum {

PixelBuffer viewPixels(const void* data, std::int32_t rowBytes, std::int32_t width,
                       std::int32_t height, bool isFloat, bool isDeep) noexcept {
  const std::int64_t available = std::abs(std::int64_t{rowBytes});
  const auto fits = [&](PixelDepth depth) {
    return std::int64_t{width} * pixelBytes(depth) <= available;
  };
  PixelBuffer pixels{data, rowBytes, width, height, PixelDepth::bits8};
  if (isFloat && fits(PixelDepth::float32)) {
    pixels.depth = PixelDepth::float32;
  } else if ((isFloat || isDeep) && fits(PixelDepth::bits16)) {
    pixels.depth = PixelDepth::bits16;
  } else if (!fits(PixelDepth::bits8)) {
    pixels.data = nullptr;
  }
  return pixels;
}

}  // namespace varilum
