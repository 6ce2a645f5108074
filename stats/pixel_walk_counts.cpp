// stats/pixel_walk_counts.cpp — two or three counts a pixel, one for as many as have its colour.
#include "stats/pixel_walk_counts.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>

#include "stats/luminance.h"
#include "stats/pixel_walk_levels.h"

namespace varilum {
namespace {

constexpr int kQuad = 4;                        // pixels counted together
constexpr std::int64_t kManySamples = 1 << 17;  // from here on red and blue share their counts

const std::byte* pixelAt(const std::byte* pixels, int index) noexcept {
  return pixels + std::size_t{Read8::kBytes} * static_cast<unsigned>(index);
}

LevelWord wordAt(const std::byte* pixels, int index) noexcept {
  return Read8::levels(pixelAt(pixels, index));
}

bool isOneColour(const std::byte* pixels, int count) noexcept {
  const LevelWord first = wordAt(pixels, 0);
  if ((wordAt(pixels, count - 1) ^ first) >> 8 != 0) return false;  // nearly always settles it
  LevelWord differences = 0;
  for (int i = 0; i < count; ++i) differences |= wordAt(pixels, i) ^ first;
  return differences >> 8 == 0;
}

template <class Number>
Number load(const void* at) noexcept {
  Number number;
  std::memcpy(&number, at, sizeof number);
  return number;
}

constexpr std::uint8_t levelAt(std::uint64_t pixels, int bit) noexcept {
  return static_cast<std::uint8_t>(pixels >> bit);
}

// Gives pixels between two levels the one that the rule gives them. Done before the piece is
// counted, so that nothing waits for it.
void settleTies(WalkPairs& pairs, int block, const std::byte* pixels) noexcept {
  for (unsigned ties = pairs.ties[block]; ties != 0; ties &= ties - 1) {
    const int i = block * kWalkBlock + std::countr_zero(ties);
    const LevelWord word = wordAt(pixels, i);
    const std::uint8_t green = levelAt(word, 16);
    pairs.greenLuminance[i] = static_cast<std::uint16_t>(
        kGreenStride * green + luminanceOfTie(levelAt(word, 8), green, levelAt(word, 24)));
  }
}

}  // namespace

WalkCounts::WalkCounts(std::int64_t samples) noexcept {
  if (samples >= kManySamples) redBlue_.reset(new (std::nothrow) std::uint32_t[kRedBluePairs]());
}

void WalkCounts::add(const WalkKernels& kernels, const std::byte* pixels, int count) noexcept {
  if (isOneColour(pixels, count)) {
    return addColour(wordAt(pixels, 0), static_cast<std::uint32_t>(count));
  }
  WalkPairs pairs;
  kernels.pair(pixels, (count + kWalkBlock - 1) / kWalkBlock * kWalkBlock, pairs);
  for (int block = 0; block * kWalkBlock < count; ++block) {
    if (pairs.ties[block] != 0) settleTies(pairs, block, pixels);
  }
  // Stretches of many colours between groups of one.
  int done = 0;
  for (int from = 0; from < count; from += kGroup) {
    const int to = std::min(from + kGroup, count);
    if (!isOneColour(pixelAt(pixels, from), to - from)) continue;
    addPairs(pairs, done, from);
    addColour(wordAt(pixels, from), static_cast<std::uint32_t>(to - from));
    done = to;
  }
  addPairs(pairs, done, count);
}

void WalkCounts::addColour(LevelWord word, std::uint32_t count) noexcept {
  const std::uint8_t red = levelAt(word, 8);
  const std::uint8_t green = levelAt(word, 16);
  const std::uint8_t blue = levelAt(word, 24);
  greenLuminance_[kGreenStride * green + luminanceLevel(red, green, blue)] += count;
  red_[0][red] += count;
  blue_[0][blue] += count;
}

void WalkCounts::addPairs(const WalkPairs& pairs, int from, int to) noexcept {
  if (redBlue_ != nullptr) {
    std::uint32_t* const counts = redBlue_.get();
    addPairs(pairs, from, to, [counts](std::uint16_t redBlue, int) { ++counts[redBlue]; });
  } else {
    addPairs(pairs, from, to, [this](std::uint16_t redBlue, int turn) {
      ++red_[turn][levelAt(redBlue, 8)];
      ++blue_[turn][levelAt(redBlue, 0)];
    });
  }
}

template <class CountRedBlue>
void WalkCounts::addPairs(const WalkPairs& pairs, int from, int to,
                          CountRedBlue countRedBlue) noexcept {
  int i = from;
  for (; i + kQuad <= to; i += kQuad) {
    const auto greens = load<std::uint64_t>(pairs.greenLuminance + i);
    const auto redBlues = load<std::uint64_t>(pairs.redBlue + i);
    for (int k = 0; k < kQuad; ++k) {
      ++greenLuminance_[static_cast<std::uint16_t>(greens >> (16 * k))];
      countRedBlue(static_cast<std::uint16_t>(redBlues >> (16 * k)), k % kTurns);
    }
  }
  for (; i < to; ++i) {
    ++greenLuminance_[pairs.greenLuminance[i]];
    countRedBlue(pairs.redBlue[i], 0);
  }
}

void WalkCounts::addTo(FrameHistogram& histogram) const noexcept {
  for (int level = 0; level < kLevels; ++level) {
    for (int turn = 0; turn < kTurns; ++turn) {
      histogram.red[level] += red_[turn][level];
      histogram.blue[level] += blue_[turn][level];
    }
  }
  for (int red = 0; red < kLevels && redBlue_ != nullptr; ++red) {
    const std::uint32_t* counts = &redBlue_[static_cast<std::size_t>(red) * kLevels];
    std::uint32_t sum = 0;
    for (int blue = 0; blue < kLevels; ++blue) {
      sum += counts[blue];
      histogram.blue[blue] += counts[blue];
    }
    histogram.red[red] += sum;
  }
  for (int green = 0; green < kLevels; ++green) {
    const auto level = static_cast<std::uint8_t>(green);
    const int from = luminanceLevel(0, level, 0);
    const int to = luminanceLevel(255, level, 255) + 1;
    std::uint32_t sum = 0;
    for (int luminance = from; luminance < to; ++luminance) {
      const std::uint32_t count = greenLuminance_[kGreenStride * green + luminance];
      sum += count;
      histogram.luminance[luminance] += count;
    }
    histogram.green[green] += sum;
  }
}

}  // namespace varilum
