// validate/test_layer.cpp — the footage that checks render: made up, the same for the same seed.
#include "validate/test_layer.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace validate {
namespace {

// In 0..1.
double grain(std::uint64_t seed, std::int32_t frame, std::int32_t x, std::int32_t y) noexcept {
  std::uint64_t v = seed ^ (static_cast<std::uint64_t>(frame) << 48) ^
                    (static_cast<std::uint64_t>(static_cast<std::uint32_t>(x)) << 24) ^
                    static_cast<std::uint32_t>(y);
  v = (v ^ (v >> 30)) * 0xBF58476D1CE4E5B9ULL;
  v = (v ^ (v >> 27)) * 0x94D049BB133111EBULL;
  return static_cast<double>((v ^ (v >> 31)) >> 11) * 0x1p-53;
}

template <typename Channel>
void put(std::byte* at, const double (&argb)[4], double white) {
  Channel pixel[4];
  for (int i = 0; i < 4; ++i) {
    pixel[i] = static_cast<Channel>(white > 1.0 ? std::floor(argb[i] * white + 0.5) : argb[i]);
  }
  std::memcpy(at, pixel, sizeof pixel);
}

}  // namespace

TestLayer::TestLayer(const LayerShape& shape, std::uint64_t seed) : seed_(seed) {
  info_.width = shape.width;
  info_.height = shape.height;
  info_.frameCount = shape.frames;
  info_.timeStep = 128;
  info_.timeScale = 3200;
  info_.depth = shape.depth;
}

void TestLayer::read(std::int32_t frame, host::Image& image) {
  const double gain = 0.8 + 0.2 * std::cos(2.1 * frame);
  for (std::int32_t y = 0; y < image.height(); ++y) {
    std::byte* at = image.row(y);
    for (std::int32_t x = 0; x < image.width(); ++x) {
      const double across = (x + 0.5) / image.width();
      const double down = (y + 0.5) / image.height();
      const double noise = 0.1 * grain(seed_, frame, x, y);
      const double alpha = std::min(1.0, 2.0 - across - down);
      const double argb[4] = {alpha, gain * (0.1 + 0.8 * across + noise),
                              gain * (0.1 + 0.8 * down + noise), gain * (0.5 + noise)};
      switch (image.depth()) {
        case host::Depth::bits8:
          put<std::uint8_t>(at, argb, 255.0);
          break;
        case host::Depth::bits16:
          put<std::uint16_t>(at, argb, 32768.0);
          break;
        case host::Depth::float32:
          put<float>(at, argb, 1.0);
          break;
      }
      at += host::pixelBytes(image.depth());
    }
  }
}

}  // namespace validate
