// cli/job/frame_level.cpp — a frame's brightness on the way in and out.
#include "cli/job/frame_level.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace cli {
namespace {

constexpr int kEnoughRows = 360;

struct Sums {
  double level = 0.0;
  double square = 0.0;
};

// Hundredths of a level.
constexpr std::uint32_t weighed(std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
  return 30 * red + 59 * green + 11 * blue;
}

// Two pixels' components at a time in lanes of two bytes: red and blue as the upper bytes, green as
// one of the lower.
std::uint64_t levelSum(const std::uint8_t* pixels, std::ptrdiff_t count) {
  static_assert(std::endian::native == std::endian::little);
  using Lanes [[gnu::vector_size(16)]] = std::uint16_t;
  constexpr std::ptrdiff_t kPixels = 4;             // in a vector
  constexpr std::ptrdiff_t kPiece = 256 * kPixels;  // 255 times 256 is within 16 bits
  std::uint64_t level = 0;
  const std::ptrdiff_t whole = count / kPixels * kPixels;
  for (std::ptrdiff_t start = 0; start < whole; start += kPiece) {
    Lanes upper{};
    Lanes lower{};
    const std::ptrdiff_t end = std::min(whole, start + kPiece);
    for (std::ptrdiff_t i = start; i < end; i += kPixels) {
      Lanes words;
      std::memcpy(&words, pixels + 4 * i, sizeof words);
      upper += words >> 8;
      lower += words & 0xFF;
    }
    for (int lane = 0; lane < 8; lane += 2) {
      level += weighed(upper[lane], lower[lane + 1], upper[lane + 1]);
    }
  }
  for (std::ptrdiff_t i = whole; i < count; ++i) {
    level += weighed(pixels[4 * i + 1], pixels[4 * i + 2], pixels[4 * i + 3]);
  }
  return level;
}

Sums rowSums(const std::uint8_t* pixels, std::ptrdiff_t count, bool squares) {
  std::uint64_t level = 0;
  std::uint64_t square = 0;
  if (squares) {
    for (std::ptrdiff_t i = 0; i < count; ++i) {
      const std::uint8_t* pixel = pixels + 4 * i;
      const std::uint64_t value = weighed(pixel[1], pixel[2], pixel[3]);
      level += value;
      square += value * value;
    }
  } else {
    level = levelSum(pixels, count);
  }
  return {static_cast<double>(level) / 100.0, static_cast<double>(square) / 10'000.0};
}

Sums rowSums(const std::uint16_t* pixels, std::ptrdiff_t count, bool squares) {
  constexpr double kToLevel = 255.0 / 32768.0 / 100.0;
  std::uint64_t level = 0;
  double square = 0.0;
  for (std::ptrdiff_t i = 0; i < count; ++i) {
    const std::uint16_t* pixel = pixels + 4 * i;
    const std::uint32_t value = weighed(pixel[1], pixel[2], pixel[3]);
    level += value;
    if (squares) square += static_cast<double>(value) * static_cast<double>(value);
  }
  return {static_cast<double>(level) * kToLevel, square * kToLevel * kToLevel};
}

Sums rowSums(const float* pixels, std::ptrdiff_t count, bool squares) {
  Sums sums;
  for (std::ptrdiff_t i = 0; i < count; ++i) {
    const float* pixel = pixels + 4 * i;
    double value =
        255.0 * (0.3 * static_cast<double>(pixel[1]) + 0.59 * static_cast<double>(pixel[2]) +
                 0.11 * static_cast<double>(pixel[3]));
    if (!std::isfinite(value)) value = 0.0;
    sums.level += value;
    if (squares) sums.square += value * value;
  }
  return sums;
}

}  // namespace

LevelMeter::LevelMeter(const media::ConstArgbView& pixels, const LevelArea& area)
    : pixels_(pixels), favorBrighter_(area.favorBrighter) {
  const bool whole = area.right <= area.left || area.bottom <= area.top;
  left_ = whole ? 0 : std::clamp(area.left, 0, pixels.width);
  right_ = whole ? pixels.width : std::clamp(area.right, 0, pixels.width);
  top_ = whole ? 0 : std::clamp(area.top, 0, pixels.height);
  bottom_ = whole ? pixels.height : std::clamp(area.bottom, 0, pixels.height);
  step_ = std::max(1, ((bottom_ - top_) / kEnoughRows - 1) | 1);  // odd: of both fields
}

void LevelMeter::add(int y) {
  if (y < top_ || y >= bottom_ || (y - top_) % step_ != 0) return;
  const std::ptrdiff_t first = std::ptrdiff_t{4} * left_;
  const std::ptrdiff_t count = right_ - left_;
  Sums sums;
  switch (pixels_.depth) {
    case media::Depth::eight:
      sums =
          rowSums(static_cast<const std::uint8_t*>(pixels_.row(y)) + first, count, favorBrighter_);
      break;
    case media::Depth::sixteen:
      sums =
          rowSums(static_cast<const std::uint16_t*>(pixels_.row(y)) + first, count, favorBrighter_);
      break;
    case media::Depth::floating:
      sums = rowSums(static_cast<const float*>(pixels_.row(y)) + first, count, favorBrighter_);
      break;
  }
  level_ += sums.level;
  square_ += sums.square;
  count_ += static_cast<double>(count);
}

double LevelMeter::level() const {
  if (favorBrighter_ && level_ > 0.0) return square_ / level_;
  return count_ > 0.0 ? level_ / count_ : 0.0;
}

double frameLevel(const media::ConstArgbView& pixels, const LevelArea& area) {
  LevelMeter meter(pixels, area);
  for (int y = 0; y < pixels.height; ++y) meter.add(y);
  return meter.level();
}

}  // namespace cli
