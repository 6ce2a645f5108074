// tests/footage/scene.cpp — made-up places that a made-up camera looks at.
#include "tests/footage/scene.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace footage::test {
namespace {

double smooth(double t) {
  return t * t * (3 - 2 * t);
}

/// Noise between lattice points, `cells` a side, that repeats.
class Lattice {
 public:
  Lattice(RandomNumbers& random, int cells)
      : cells_(cells), values_(static_cast<std::size_t>(cells) * static_cast<std::size_t>(cells)) {
    for (double& value : values_) value = random.unit();
  }
  /// Position 0..1.
  double at(double x, double y) const {
    const double gridX = x * cells_;
    const double gridY = y * cells_;
    const int left = static_cast<int>(std::floor(gridX));
    const int top = static_cast<int>(std::floor(gridY));
    const double shareX = smooth(gridX - left);
    const double shareY = smooth(gridY - top);
    const double upper = point(left, top) + shareX * (point(left + 1, top) - point(left, top));
    const double lower =
        point(left, top + 1) + shareX * (point(left + 1, top + 1) - point(left, top + 1));
    return upper + shareY * (lower - upper);
  }

 private:
  double point(int x, int y) const {
    return values_[static_cast<std::size_t>(y % cells_ * cells_ + x % cells_)];
  }

  int cells_;
  std::vector<double> values_;
};

Colour randomColour(RandomNumbers& random, const PlaceStyle& style) {
  const double middle = random.between(110, 150);
  const double level = std::clamp(middle + style.contrast * random.between(-115, 110), 2.0, 252.0);
  Colour colour;
  for (float& channel : colour) {
    channel = static_cast<float>(
        std::clamp(level * (1 + style.saturation * random.between(-0.6, 0.6)), 0.0, 255.0));
  }
  return colour;
}

Colour mix(const Colour& a, const Colour& b, double share) {
  Colour mixed;
  for (std::size_t i = 0; i < 3; ++i) {
    mixed[i] = static_cast<float>(a[i] + share * (b[i] - a[i]));
  }
  return mixed;
}

}  // namespace

Place::Place(std::uint64_t seed, const PlaceStyle& style)
    : texels_(static_cast<std::size_t>(kSide) * kSide) {
  RandomNumbers random(seed);
  paintGround(random, style);
  for (int i = 0; i < style.shapes; ++i) paintShape(random, style);
  if (!style.night) return;
  for (Colour& colour : texels_) {
    for (float& channel : colour) channel = 4 + 0.09F * channel;
  }
  for (int i = 0; i < 60; ++i) paintLight(random);
}

Colour& Place::texel(int x, int y) {
  const int column = x & (kSide - 1);
  const int row = y & (kSide - 1);
  return texels_[static_cast<std::size_t>(row * kSide + column)];
}

void Place::paintGround(RandomNumbers& random, const PlaceStyle& style) {
  std::vector<Lattice> octaves;
  for (int cells = 8; cells <= 128; cells *= 2) octaves.emplace_back(random, cells);
  const Colour low = randomColour(random, style);
  const Colour middle = randomColour(random, style);
  const Colour high = randomColour(random, style);
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      double sum = 0;
      double weight = 1;
      double whole = 0;
      for (const Lattice& octave : octaves) {
        sum += weight * octave.at(static_cast<double>(x) / kSide, static_cast<double>(y) / kSide);
        whole += weight;
        weight *= style.roughness;
      }
      const double value = std::clamp(0.5 + 1.8 * (sum / whole - 0.5), 0.0, 1.0);
      texel(x, y) = value < 0.5 ? mix(low, middle, 2 * value) : mix(middle, high, 2 * value - 1);
    }
  }
}

void Place::paintShape(RandomNumbers& random, const PlaceStyle& style) {
  const Colour colour = randomColour(random, style);
  const Colour stripe = random.chance(0.3) ? randomColour(random, style) : colour;
  const int stripes = random.whole(2, 6);
  const int centreX = random.whole(0, kSide - 1);
  const int centreY = random.whole(0, kSide - 1);
  const int halfX = random.whole(2, 18);
  const int halfY = random.whole(2, 18);
  const bool round = random.chance(0.5);
  for (int y = -halfY; y <= halfY; ++y) {
    for (int x = -halfX; x <= halfX; ++x) {
      const double inX = static_cast<double>(x) / halfX;
      const double inY = static_cast<double>(y) / halfY;
      if (round && inX * inX + inY * inY > 1) continue;
      texel(centreX + x, centreY + y) = (x + halfX) / stripes % 2 == 0 ? colour : stripe;
    }
  }
}

void Place::paintLight(RandomNumbers& random) {
  const int centreX = random.whole(0, kSide - 1);
  const int centreY = random.whole(0, kSide - 1);
  const int radius = random.whole(1, 3);
  const Colour colour{static_cast<float>(random.between(140, 255)),
                      static_cast<float>(random.between(110, 230)),
                      static_cast<float>(random.between(50, 200))};
  for (int y = -radius; y <= radius; ++y) {
    for (int x = -radius; x <= radius; ++x) {
      if (x * x + y * y <= radius * radius) texel(centreX + x, centreY + y) = colour;
    }
  }
}

Colour Place::at(double x, double y) const {
  const double column = x * kTexelsAWidth;
  const double row = y * kTexelsAWidth;
  const int left = static_cast<int>(std::floor(column));
  const int top = static_cast<int>(std::floor(row));
  const auto point = [this](int px, int py) -> const Colour& {
    return texels_[static_cast<std::size_t>((py & (kSide - 1)) * kSide + (px & (kSide - 1)))];
  };
  const double shareX = column - left;
  return mix(mix(point(left, top), point(left + 1, top), shareX),
             mix(point(left, top + 1), point(left + 1, top + 1), shareX), row - top);
}

void drawPlace(const Place& place, const CameraPose& pose, Frame& frame) {
  const double way = std::hypot(pose.blurX, pose.blurY) * frame.width;  // pixels
  const int samples = std::clamp(static_cast<int>(way), 1, 8);
  const double pixel = 1.0 / frame.width;
  for (int y = 0; y < frame.height; ++y) {
    for (int x = 0; x < frame.width; ++x) {
      const double worldX = pose.x + (x - 0.5 * frame.width) * pixel / pose.zoom;
      const double worldY = pose.y + (y - 0.5 * frame.height) * pixel / pose.zoom;
      Colour sum{};
      for (int i = 0; i < samples; ++i) {
        const double share = static_cast<double>(i) / samples - 0.5;
        const Colour colour = place.at(worldX + share * pose.blurX, worldY + share * pose.blurY);
        for (std::size_t c = 0; c < 3; ++c) sum[c] += colour[c];
      }
      for (float& channel : sum) channel /= static_cast<float>(samples);
      frame.pixels[static_cast<std::size_t>(y * frame.width + x)] = sum;
    }
  }
}

void drawPasser(const Passer& passer, double time, const Place& coat, Frame& frame) {
  const double centreX = passer.x + time * passer.vx;
  const double centreY = passer.y + time * passer.vy;
  for (int y = 0; y < frame.height; ++y) {
    const double offY = (static_cast<double>(y) / frame.width - centreY);
    if (std::abs(offY) > passer.halfHeight) continue;
    for (int x = 0; x < frame.width; ++x) {
      const double offX = static_cast<double>(x) / frame.width - centreX;
      if (std::abs(offX) > passer.halfWidth) continue;
      const double ring =
          std::pow(offX / passer.halfWidth, 2) + std::pow(offY / passer.halfHeight, 2);
      if (ring > 1) continue;
      frame.pixels[static_cast<std::size_t>(y * frame.width + x)] =
          coat.at(passer.textureX + offX, passer.textureY + offY);
    }
  }
}

}  // namespace footage::test
