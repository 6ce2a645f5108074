// stats/pixel_walk.cpp — reading pixels of three depths, counting levels in four histograms.
//
// Sampled pixels are taken in small groups. A group of one colour, as in titles, mattes and flat
// skies, is counted at one blow; otherwise pixels are counted one by one, in partial histograms
// that take turns so that equal neighbours do not wait for each other's counts.
#include "stats/pixel_walk.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "stats/luminance.h"

namespace varilum {
namespace {

constexpr int kGroup = 8;  // pixels
constexpr int kPartials = 4;
constexpr int kPadding = 16;  // a cache line of bins: equal bins of two tables never share a set

// Levels of one pixel: red in bits 8..15, green in 16..23, blue in 24..31, as 8-bit pixels lie in
// memory when read as one little-endian number. Bits 0..7 mean nothing.
using LevelWord = std::uint32_t;

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
    // False for NaN too. The one whole number at the lower end that it leaves out has 0 in its low
    // bits anyway.
    const bool fits = std::fabs(scaled) < 2147483648.0;
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

class Counter {
 public:
  void add(const LevelWord (&words)[kGroup]) noexcept {
    if (isOneColour(words)) {
      add(partials_[0], words[0], kGroup);
    } else {
      for (int i = 0; i < kGroup; ++i) add(partials_[i % kPartials], words[i], 1);
    }
  }

  void add(LevelWord word) noexcept { add(partials_[0], word, 1); }

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
  static bool isOneColour(const LevelWord (&words)[kGroup]) noexcept {
    LevelWord differences = 0;
    for (int i = 1; i < kGroup; ++i) differences |= words[i] ^ words[0];
    return differences >> 8 == 0;
  }

  static void add(PartialHistogram& partial, LevelWord word, std::uint32_t count) noexcept {
    const auto red = static_cast<std::uint8_t>(word >> 8);
    const auto green = static_cast<std::uint8_t>(word >> 16);
    const auto blue = static_cast<std::uint8_t>(word >> 24);
    partial.luminance[luminanceLevel(red, green, blue)] += count;
    partial.red[red] += count;
    partial.green[green] += count;
    partial.blue[blue] += count;
  }

  PartialHistogram partials_[kPartials] = {};
};

// Step: a number, or an integral constant where the compiler shall know it.
template <class Read, class Step>
void walk(const PixelBuffer& pixels, const Rect& rect, Step step,
          FrameHistogram& histogram) noexcept {
  Counter counter;
  const auto stride = static_cast<std::ptrdiff_t>(step * std::int64_t{Read::kBytes});
  const std::int64_t width = std::int64_t{rect.right} - rect.left;
  const std::int64_t samples = (width + step - 1) / step;
  const auto* first = static_cast<const std::byte*>(pixels.data) +
                      static_cast<std::ptrdiff_t>(rect.left * std::int64_t{Read::kBytes});
  for (std::int64_t y = rect.top; y < rect.bottom; y += step) {
    const std::byte* row = first + static_cast<std::ptrdiff_t>(y) * pixels.rowBytes;
    const auto sample = [&](std::int64_t x) {
      return Read::levels(row + static_cast<std::ptrdiff_t>(x) * stride);
    };
    std::int64_t x = 0;
    for (; x + kGroup <= samples; x += kGroup) {
      LevelWord words[kGroup];
      for (int i = 0; i < kGroup; ++i) words[i] = sample(x + i);
      counter.add(words);
    }
    for (; x < samples; ++x) counter.add(sample(x));
  }
  counter.addTo(histogram);
}

template <class Read>
void walkBy(const PixelBuffer& pixels, const Rect& rect, std::int64_t step,
            FrameHistogram& histogram) noexcept {
  if (step == 1) {
    walk<Read>(pixels, rect, std::integral_constant<std::int64_t, 1>{}, histogram);
  } else {
    walk<Read>(pixels, rect, step, histogram);
  }
}

}  // namespace

void walkPixels(const PixelBuffer& pixels, const Rect& rect, std::int32_t step,
                FrameHistogram& histogram) noexcept {
  if (pixels.data == nullptr || rect.left >= rect.right || rect.top >= rect.bottom) return;
  switch (pixels.depth) {
    case PixelDepth::float32:
      return walkBy<ReadFloat>(pixels, rect, step, histogram);
    case PixelDepth::bits16:
      return walkBy<Read16>(pixels, rect, step, histogram);
    case PixelDepth::bits8:
      return walkBy<Read8>(pixels, rect, step, histogram);
  }
}

}  // namespace varilum
