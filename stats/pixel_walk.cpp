// stats/pixel_walk.cpp — sampled pixels row by row, a piece of levels at a time, into the counts.
#include "stats/pixel_walk.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "stats/pixel_walk_counts.h"
#include "stats/pixel_walk_levels.h"

namespace varilum {
namespace {

// Where a piece's levels are gathered unless they lie ready in the picture. Kernels read whole
// blocks, and read pixels only where there are some.
struct Staging {
  LevelWord words[kWalkPiece] = {};

  const std::byte* bytes() const noexcept { return reinterpret_cast<const std::byte*>(words); }
};

// Levels of count neighbouring pixels.
const std::byte* stage(Read8, const WalkKernels&, const std::byte* pixels, int count,
                       Staging& staging) noexcept {
  if (count % kWalkBlock == 0) return pixels;
  std::memcpy(staging.words, pixels, static_cast<std::size_t>(count) * Read8::kBytes);
  return staging.bytes();
}

template <class Read>
const std::byte* stage(Read, const WalkKernels& kernels, const std::byte* pixels, int count,
                       Staging& staging) noexcept {
  const auto convert = std::is_same_v<Read, Read16> ? kernels.read16 : kernels.readFloat;
  const int whole = count / kWalkBlock * kWalkBlock;
  convert(pixels, whole, staging.words);
  for (int i = whole; i < count; ++i) {
    staging.words[i] = Read::levels(pixels + static_cast<std::size_t>(i) * Read::kBytes);
  }
  return staging.bytes();
}

// Levels of count pixels, stride bytes apart.
template <class Read>
const std::byte* stageApart(const std::byte* pixels, std::ptrdiff_t stride, int count,
                            Staging& staging) noexcept {
  for (int i = 0; i < count; ++i) staging.words[i] = Read::levels(pixels + i * stride);
  return staging.bytes();
}

// Asks for bytes that are needed soon: at the counts' pace the processor itself looks ahead too
// little.
void fetchAhead(const std::byte* bytes, std::size_t count) noexcept {
  constexpr std::size_t kLine = 64;
  for (std::size_t at = 0; at < count; at += kLine) __builtin_prefetch(bytes + at);
}

template <class Read>
void walk(const PixelBuffer& pixels, const Rect& rect, std::int64_t step, FrameHistogram& histogram,
          const WalkKernels& kernels) noexcept {
  const auto stride = static_cast<std::ptrdiff_t>(step * std::int64_t{Read::kBytes});
  const auto stepsIn = [step](std::int32_t from, std::int32_t to) {
    return (std::int64_t{to} - from + step - 1) / step;
  };
  const std::int64_t samples = stepsIn(rect.left, rect.right);
  WalkCounts counts(samples * stepsIn(rect.top, rect.bottom));
  Staging staging;
  const auto* first = static_cast<const std::byte*>(pixels.data) +
                      static_cast<std::ptrdiff_t>(rect.left * std::int64_t{Read::kBytes});
  for (std::int64_t y = rect.top; y < rect.bottom; y += step) {
    const std::byte* row = first + static_cast<std::ptrdiff_t>(y) * pixels.rowBytes;
    for (std::int64_t x = 0; x < samples; x += kWalkPiece) {
      const int count = static_cast<int>(std::min<std::int64_t>(samples - x, kWalkPiece));
      const std::byte* piece = row + static_cast<std::ptrdiff_t>(x) * stride;
      const std::int64_t left = std::min<std::int64_t>(samples - x - count, kWalkPiece);
      if (step == 1)
        fetchAhead(piece + count * stride, static_cast<std::size_t>(left) * Read::kBytes);
      const std::byte* levels = step == 1 ? stage(Read{}, kernels, piece, count, staging)
                                          : stageApart<Read>(piece, stride, count, staging);
      counts.add(kernels, levels, count);
    }
  }
  counts.addTo(histogram);
}

}  // namespace

void walkPixels(const PixelBuffer& pixels, const Rect& rect, std::int32_t step,
                FrameHistogram& histogram) noexcept {
  walkPixels(pixels, rect, step, histogram, bestWalkKernels());
}

void walkPixels(const PixelBuffer& pixels, const Rect& rect, std::int32_t step,
                FrameHistogram& histogram, const WalkKernels& kernels) noexcept {
  if (pixels.data == nullptr || rect.left >= rect.right || rect.top >= rect.bottom) return;
  switch (pixels.depth) {
    case PixelDepth::float32:
      return walk<ReadFloat>(pixels, rect, step, histogram, kernels);
    case PixelDepth::bits16:
      return walk<Read16>(pixels, rect, step, histogram, kernels);
    case PixelDepth::bits8:
      return walk<Read8>(pixels, rect, step, histogram, kernels);
  }
}

}  // namespace varilum
