// stats/pixel_walk_counts.cpp — three counts a pixel, one for as many as have the same colour.
#include "stats/pixel_walk_counts.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "stats/luminance.h"
#include "stats/pixel_walk_levels.h"

namespace varilum {
namespace {

constexpr int kQuad = 4;  // pixels counted together

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
    pairs.index[i] = static_cast<std::uint16_t>(
        kGreenStride * green + luminanceOfTie(levelAt(word, 8), green, levelAt(word, 24)));
  }
}

}  // namespace

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
    addPairs(pairs, pixels, done, from);
    addColour(wordAt(pixels, from), static_cast<std::uint32_t>(to - from));
    done = to;
  }
  addPairs(pairs, pixels, done, count);
}

void WalkCounts::addColour(LevelWord word, std::uint32_t count) noexcept {
  const std::uint8_t red = levelAt(word, 8);
  const std::uint8_t green = levelAt(word, 16);
  const std::uint8_t blue = levelAt(word, 24);
  pairs_[kGreenStride * green + luminanceLevel(red, green, blue)] += count;
  red_[0][red] += count;
  blue_[0][blue] += count;
}

void WalkCounts::addPairs(const WalkPairs& pairs, const std::byte* pixels, int from,
                          int to) noexcept {
  int i = from;
  for (; i + kQuad <= to; i += kQuad) {
    const auto indexes = load<std::uint64_t>(pairs.index + i);
    for (int bit = 0; bit < 64; bit += 16) ++pairs_[static_cast<std::uint16_t>(indexes >> bit)];
    for (int k = 0; k < kQuad; ++k) addRedBlue(wordAt(pixels, i + k), k % kTurns);
  }
  for (; i < to; ++i) {
    ++pairs_[pairs.index[i]];
    addRedBlue(wordAt(pixels, i), 0);
  }
}

void WalkCounts::addRedBlue(LevelWord word, int turn) noexcept {
  ++red_[turn][levelAt(word, 8)];
  ++blue_[turn][levelAt(word, 24)];
}

void WalkCounts::addTo(FrameHistogram& histogram) const noexcept {
  for (int level = 0; level < kLevels; ++level) {
    for (int turn = 0; turn < kTurns; ++turn) {
      histogram.red[level] += red_[turn][level];
      histogram.blue[level] += blue_[turn][level];
    }
  }
  for (int green = 0; green < kLevels; ++green) {
    const auto level = static_cast<std::uint8_t>(green);
    const int from = luminanceLevel(0, level, 0);
    const int to = luminanceLevel(255, level, 255) + 1;
    std::uint32_t sum = 0;
    for (int luminance = from; luminance < to; ++luminance) {
      const std::uint32_t count = pairs_[kGreenStride * green + luminance];
      sum += count;
      histogram.luminance[luminance] += count;
    }
    histogram.green[green] += sum;
  }
}

}  // namespace varilum
