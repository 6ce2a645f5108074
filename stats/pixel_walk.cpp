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

// A piece of a row: count pixels from first on, stride bytes apart.
struct Piece {
  const std::byte* first;
  std::ptrdiff_t stride;
  int count;
};

// Asks for pixels that are needed soon: at the counts' pace the processor itself looks ahead too
// little.
void fetch(const Piece& piece, std::size_t pixelBytes) noexcept {
  constexpr std::ptrdiff_t kLine = 64;
  const std::byte* at = piece.first;
  const auto bytes = (piece.count - 1) * piece.stride + static_cast<std::ptrdiff_t>(pixelBytes);
  const std::ptrdiff_t stride = std::max(piece.stride, kLine);
  for (std::ptrdiff_t offset = 0; offset < bytes; offset += stride) __builtin_prefetch(at + offset);
}

// The sampled pixels of a rectangle, a piece after the other.
template <class Read>
class Pieces {
 public:
  Pieces(const PixelBuffer& pixels, const Rect& rect, std::int64_t step) noexcept
      : row_(static_cast<const std::byte*>(pixels.data) +
             static_cast<std::ptrdiff_t>(rect.left * std::int64_t{Read::kBytes}) +
             static_cast<std::ptrdiff_t>(rect.top) * pixels.rowBytes),
        rowStride_(static_cast<std::ptrdiff_t>(step) * pixels.rowBytes),
        stride_(static_cast<std::ptrdiff_t>(step * std::int64_t{Read::kBytes})),
        samples_((std::int64_t{rect.right} - rect.left + step - 1) / step),
        rows_((std::int64_t{rect.bottom} - rect.top + step - 1) / step) {}

  std::int64_t pixels() const noexcept { return samples_ * rows_; }

  bool next(Piece& piece) noexcept {
    if (x_ >= samples_) {
      x_ = 0;
      ++y_;
    }
    if (y_ >= rows_) return false;
    piece.first = row_ + static_cast<std::ptrdiff_t>(y_) * rowStride_ +
                  static_cast<std::ptrdiff_t>(x_) * stride_;
    piece.stride = stride_;
    piece.count = static_cast<int>(std::min<std::int64_t>(samples_ - x_, kWalkPiece));
    x_ += piece.count;
    return true;
  }

 private:
  const std::byte* row_;
  std::ptrdiff_t rowStride_;
  std::ptrdiff_t stride_;
  std::int64_t samples_;  // in a row
  std::int64_t rows_;
  std::int64_t x_ = 0;  // in samples
  std::int64_t y_ = 0;
};

template <class Read>
void walk(const PixelBuffer& pixels, const Rect& rect, std::int64_t step, FrameHistogram& histogram,
          const WalkKernels& kernels) noexcept {
  Pieces<Read> pieces(pixels, rect, step);
  WalkCounts counts(pieces.pixels());
  Staging staging;
  Piece piece;
  bool more = pieces.next(piece);
  while (more) {
    const Piece present = piece;
    more = pieces.next(piece);
    if (more) fetch(piece, Read::kBytes);
    const std::byte* levels =
        step == 1 ? stage(Read{}, kernels, present.first, present.count, staging)
                  : stageApart<Read>(present.first, present.stride, present.count, staging);
    counts.add(kernels, levels, present.count);
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
