// bench/bench_picture.cpp — gradients, edges and grain by arithmetic.
#include "bench/bench_picture.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>

#include "hostapi/world.h"

namespace varilum::bench {
namespace {

struct Colour {
  double red;
  double green;
  double blue;
};

// Sky, hills and a bright disc: long gradients with a few edges, as footage has.
Colour sceneAt(double x, double y) {
  const double hill = 0.55 + 0.12 * std::sin(x * 5.0) + 0.05 * std::sin(x * 17.0 + 1.0);
  const double toDisc = std::hypot((x - 0.7) * 1.78, y - 0.25);
  if (toDisc < 0.09) return {0.98, 0.95, 0.80};
  if (y < hill) {
    const double glow = std::exp(-toDisc * 4.0);
    return {0.25 + 0.35 * y + 0.4 * glow, 0.40 + 0.30 * y + 0.3 * glow, 0.75 - 0.15 * y};
  }
  const double depth = (y - hill) / (1.0 - hill);
  const double shade = 0.5 + 0.3 * std::sin(x * 40.0 + 8.0 * depth);
  return {0.10 + 0.25 * shade * depth, 0.22 + 0.30 * shade * depth, 0.06 + 0.12 * depth};
}

template <class Pixel, class Convert>
void fill(BenchPicture& picture, Content content, Convert convert) {
  picture.bytes.resize(std::size_t{kWidth} * kHeight * sizeof(Pixel));
  std::mt19937 engine(20240217);
  std::normal_distribution<double> grain(0.0, 0.02);
  std::size_t offset = 0;
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      Colour colour{0.4, 0.4, 0.4};
      if (content == Content::natural) {
        colour = sceneAt(x / double{kWidth}, y / double{kHeight});
        const double common = grain(engine);
        colour.red += common + 0.3 * grain(engine);
        colour.green += common + 0.3 * grain(engine);
        colour.blue += common + 0.3 * grain(engine);
      }
      const auto channel = [&](double value) { return convert(std::clamp(value, 0.0, 1.0)); };
      const Pixel pixel{convert(1.0), channel(colour.red), channel(colour.green),
                        channel(colour.blue)};
      std::memcpy(&picture.bytes[offset], &pixel, sizeof pixel);
      offset += sizeof pixel;
    }
  }
}

}  // namespace

BenchPicture makePicture(PixelDepth depth, Content content) {
  BenchPicture picture;
  switch (depth) {
    case PixelDepth::bits8:
      fill<PF_Pixel>(picture, content,
                     [](double value) { return static_cast<std::uint8_t>(value * 255.0 + 0.5); });
      break;
    case PixelDepth::bits16:
      fill<PF_Pixel16>(picture, content, [](double value) {
        return static_cast<std::uint16_t>(value * 32768.0 + 0.5);
      });
      break;
    case PixelDepth::float32:
      fill<PF_PixelFloat>(picture, content, [](double value) { return static_cast<float>(value); });
      break;
  }
  picture.pixels = {picture.bytes.data(), std::ptrdiff_t{kWidth} * pixelBytes(depth), kWidth,
                    kHeight, depth};
  return picture;
}

const char* nameOf(PixelDepth depth) {
  return depth == PixelDepth::bits8 ? "8bit" : depth == PixelDepth::bits16 ? "16bit" : "float";
}

const char* nameOf(Content content) {
  return content == Content::natural ? "natural" : "flat";
}

}  // namespace varilum::bench
