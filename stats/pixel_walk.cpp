// stats/pixel_walk.cpp — reading pixels of three depths, counting levels in four histograms.
//
// A row is taken in pieces that stay in the nearest cache: sampled pixels become words of three
// 8-bit levels, then luminances are computed side by side, then everything is counted. Several
// partial histograms take turns, so that runs of equal pixels do not wait for each other's counts.
#include "stats/pixel_walk.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "stats/luminance.h"

namespace varilum {
namespace {

constexpr int kPiece = 512;  // pixels
constexpr int kPartials = 4;
constexpr int kPadding = 16;  // a cache line of bins: equal bins of two tables never share a set

// Levels of one pixel: red in bits 8..15, green in 16..23, blue in 24..31, as 8-bit pixels lie in
// memory when read as one little-endian number. Bits 0..7 mean nothing.
using LevelWord = std::uint32_t;

constexpr unsigned redOf(LevelWord word) noexcept {
  return (word >> 8) & 255;
}
constexpr unsigned greenOf(LevelWord word) noexcept {
  return (word >> 16) & 255;
}
constexpr unsigned blueOf(LevelWord word) noexcept {
  return word >> 24;
}

constexpr LevelWord packLevels(unsigned red, unsigned green, unsigned blue) noexcept {
  return red << 8 | green << 16 | blue << 24;
}

// How each depth reads a pixel. Pixels may lie at any address.
struct Read8 {
  static constexpr std::size_t kBytes = 4;
  static LevelWord levels(const std::byte* pixel) noexcept {
    LevelWord word;
    std::memcpy(&word, pixel, sizeof word);
    return word;
  }
};

struct Read16 {
  static constexpr std::size_t kBytes = 8;
  static LevelWord levels(const std::byte* pixel) noexcept {
    std::uint64_t channels;
    std::memcpy(&channels, pixel, sizeof channels);
    const auto level = [channels](int shift) {
      return static_cast<unsigned>(channels >> (shift + 7)) & 255;
    };
    return packLevels(level(16), level(32), level(48));
  }
};

struct ReadFloat {
  static constexpr std::size_t kBytes = 16;
  static unsigned level(float value) noexcept {
    const double scaled = value * 255.0;
    // Also false for NaN, which counts as 0 like everything that 32 bits cannot hold.
    const bool fits = scaled > -2147483649.0 && scaled < 2147483648.0;
    return static_cast<unsigned>(fits ? static_cast<std::int32_t>(scaled) : 0) & 255;
  }
  static LevelWord levels(const std::byte* pixel) noexcept {
    float channels[4];
    std::memcpy(channels, pixel, sizeof channels);
    return packLevels(level(channels[1]), level(channels[2]), level(channels[3]));
  }
};

struct PartialHistogram {
  std::uint32_t luminance[kLevels + kPadding];
  std::uint32_t red[kLevels + kPadding];
  std::uint32_t green[kLevels + kPadding];
  std::uint32_t blue[kLevels + kPadding];
};

constexpr std::uint16_t kTie = 0x8000;

// Luminances of a piece; kTie marks those that the caller must settle.
void computeLuminances(const LevelWord* words, std::uint16_t* luminances, int count) noexcept {
  for (int i = 0; i < count; ++i) {
    const LevelWord word = words[i];
    const std::uint16_t hundredths = luminanceHundredths(redOf(word), greenOf(word), blueOf(word));
    const std::uint16_t level = wholeHundreds(hundredths);
    const bool tie = static_cast<std::uint16_t>(level * 100) == hundredths;
    luminances[i] = static_cast<std::uint16_t>(level | (tie ? kTie : 0));
  }
}

inline void count(PartialHistogram& partial, LevelWord word, std::uint16_t luminance) noexcept {
  if (luminance & kTie) [[unlikely]] {
    luminance = luminanceOfTie(redOf(word), greenOf(word), blueOf(word));
  }
  ++partial.luminance[luminance];
  ++partial.red[redOf(word)];
  ++partial.green[greenOf(word)];
  ++partial.blue[blueOf(word)];
}

class Counter {
 public:
  void add(const LevelWord* words, int length) noexcept {
    computeLuminances(words, luminances_, length);
    int i = 0;
    for (; i + kPartials <= length; i += kPartials) {
      count(partials_[0], words[i], luminances_[i]);
      count(partials_[1], words[i + 1], luminances_[i + 1]);
      count(partials_[2], words[i + 2], luminances_[i + 2]);
      count(partials_[3], words[i + 3], luminances_[i + 3]);
    }
    for (; i < length; ++i) count(partials_[0], words[i], luminances_[i]);
  }

  void addTo(FrameHistogram& histogram) const noexcept {
    for (const PartialHistogram& partial : partials_) {
      for (int i = 0; i < kLevels; ++i) {
        histogram.luminance[i] += partial.luminance[i];
        histogram.red[i] += partial.red[i];
        histogram.green[i] += partial.green[i];
        histogram.blue[i] += partial.blue[i];
      }
    }
  }

 private:
  PartialHistogram partials_[kPartials] = {};
  std::uint16_t luminances_[kPiece];
};

template <class Read>
void walk(const PixelBuffer& pixels, const Rect& rect, std::int64_t step,
          FrameHistogram& histogram) noexcept {
  Counter counter;
  LevelWord words[kPiece];
  const auto stride = static_cast<std::ptrdiff_t>(step * std::int64_t{Read::kBytes});
  const std::int64_t width = std::int64_t{rect.right} - rect.left;
  const std::int64_t samples = (width + step - 1) / step;
  const auto* top = static_cast<const std::byte*>(pixels.data) +
                    static_cast<std::ptrdiff_t>(rect.left * std::int64_t{Read::kBytes});
  for (std::int64_t y = rect.top; y < rect.bottom; y += step) {
    const std::byte* row = top + static_cast<std::ptrdiff_t>(y) * pixels.rowBytes;
    for (std::int64_t done = 0; done < samples; done += kPiece) {
      const int length = static_cast<int>(std::min<std::int64_t>(kPiece, samples - done));
      const std::byte* piece = row + static_cast<std::ptrdiff_t>(done) * stride;
      for (int i = 0; i < length; ++i) words[i] = Read::levels(piece + i * stride);
      counter.add(words, length);
    }
  }
  counter.addTo(histogram);
}

}  // namespace

void walkPixels(const PixelBuffer& pixels, const Rect& rect, std::int32_t step,
                FrameHistogram& histogram) noexcept {
  if (pixels.data == nullptr || rect.left >= rect.right || rect.top >= rect.bottom) return;
  switch (pixels.depth) {
    case PixelDepth::float32:
      return walk<ReadFloat>(pixels, rect, step, histogram);
    case PixelDepth::bits16:
      return walk<Read16>(pixels, rect, step, histogram);
    case PixelDepth::bits8:
      return walk<Read8>(pixels, rect, step, histogram);
  }
}

}  // namespace varilum
