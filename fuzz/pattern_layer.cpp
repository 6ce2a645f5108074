// fuzz/pattern_layer.cpp — footage that costs nothing: a ramp that flickers.
#include "fuzz/pattern_layer.h"

#include <cstring>

namespace fuzz {
namespace {

// level: 0..1.
void paint(std::byte* row, std::int32_t channel, host::Depth depth, float level) {
  switch (depth) {
    case host::Depth::bits8: {
      row[channel] = static_cast<std::byte>(level * 255.0F);
      return;
    }
    case host::Depth::bits16: {
      const auto value = static_cast<std::uint16_t>(level * 32768.0F);
      std::memcpy(row + channel * 2, &value, sizeof value);
      return;
    }
    case host::Depth::float32:
      std::memcpy(row + channel * 4, &level, sizeof level);
      return;
  }
}

}  // namespace

PatternLayer::PatternLayer(std::int32_t width, std::int32_t height, std::int32_t frames,
                           host::Depth depth) {
  info_.width = width;
  info_.height = height;
  info_.frameCount = frames;
  info_.timeStep = 100;
  info_.timeScale = 2500;
  info_.depth = depth;
}

void PatternLayer::read(std::int32_t frame, host::Image& image) {
  const std::int32_t channels = image.width() * 4;
  const float gain = frame % 3 == 0 ? 0.5F : 1.0F;
  for (std::int32_t y = 0; y < image.height(); ++y) {
    for (std::int32_t c = 0; c < channels; ++c) {
      const auto place = static_cast<float>((c + y * 16) % 256);
      paint(image.row(y), c, image.depth(), c % 4 == 0 ? 1.0F : place / 255.0F * gain);
    }
  }
}

}  // namespace fuzz
