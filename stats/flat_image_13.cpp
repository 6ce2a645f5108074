// stats/flat_image_13.cpp — what moves where from the previous format version.
#include "stats/flat_image_13.h"

#include <cstring>

#include "stats/flat_image.h"

namespace varilum {
namespace {

constexpr std::int32_t kVersion13 = 13;
constexpr std::size_t kHeaderSize13 = 1068;
constexpr std::size_t kFrameSize13 = 4396;
constexpr std::size_t kBytesPerFrame = 4 * sizeof(double) + kFrameSize13;
constexpr double kLeastClippingPercent = 10.0;
constexpr double kDefaultClippingPercent = 99.0;

// A run of bytes that has the same meaning in both versions.
struct Move {
  std::size_t from;
  std::size_t to;
  std::size_t size;
};

constexpr std::size_t kBins = kLevels * sizeof(std::uint32_t);

constexpr Move kHeaderMoves[] = {
    {12, offsetof(SequenceState, frameDesiredSpread), 4},
    {16, offsetof(SequenceState, frameInputSpread), 4},
    {20, offsetof(SequenceState, reserved96), 1},
    {21, offsetof(SequenceState, analysisComplete), 1},
    {22, offsetof(SequenceState, correctionMethod), 1},
    {24, offsetof(SequenceState, gammaValue), 4},
    {28, offsetof(SequenceState, deflickerMethod), 4},
    {40, offsetof(SequenceState, recomputeDesired), 1},
    {42, offsetof(SequenceState, refreshPending), 1},
    {43, offsetof(SequenceState, adjustClipping), 1},
    {44, offsetof(SequenceState, inputDeep), 1},
    {45, offsetof(SequenceState, outputDeep), 1},
    {48, offsetof(SequenceState, clippingPercent), 8},
    {56, offsetof(SequenceState, frameDesiredLuminance), 8},
    {64, offsetof(SequenceState, frameInputLuminance), 8},
    {72, offsetof(SequenceState, currentGain), 5 * 8},  // gains and variances
    {549, offsetof(SequenceState, isFloat), 1},
};

constexpr Move kStatsMoves[] = {
    {1024, offsetof(FrameStats, pixelCount), 4},
    {1028, offsetof(FrameStats, peak), 4},
    {1032, offsetof(FrameStats, luminanceSum), 4},
    {1036, offsetof(FrameStats, totalPixels), 4},
    {1040, offsetof(FrameStats, inputLuminance), 8},
    {4120, offsetof(FrameStats, belowTopCount), 4},
    {4128, offsetof(FrameStats, inputSpread), 8},
    {4136, offsetof(FrameStats, analyzed), 1},
    {4137, offsetof(FrameStats, walked), 1},
    {4144, offsetof(FrameStats, carried48), 12},
    {4158, offsetof(FrameStats, carried48) + 12, 2},
    {4160, offsetof(FrameStats, step), 32},  // step, rect and size
};

constexpr Move kHistogramMoves[] = {
    {0, offsetof(FrameHistogram, luminance), kBins},
    {1048, offsetof(FrameHistogram, red), kBins},
    {2072, offsetof(FrameHistogram, green), kBins},
    {3096, offsetof(FrameHistogram, blue), kBins},
};

void apply(std::span<const Move> moves, std::span<const std::byte> from, void* to) noexcept {
  for (const Move& move : moves) {
    std::memcpy(static_cast<std::byte*>(to) + move.to, from.data() + move.from, move.size);
  }
}

}  // namespace

bool fitsFlatImage13(std::span<const std::byte> image, std::int32_t frameCount) noexcept {
  if (imageVersion(image) != kVersion13 || frameCount < 0) return false;
  if (image.size() < kHeaderSize13) return false;
  const std::uint64_t available = image.size() - kHeaderSize13;
  const std::uint64_t needed =
      std::uint64_t{kBytesPerFrame} * static_cast<std::uint64_t>(frameCount);
  if (available < needed) return false;
  return available == needed || available % kBytesPerFrame != 0;
}

void readHeader13(std::span<const std::byte> image, SequenceState& state) noexcept {
  apply(kHeaderMoves, image, &state);
  if (!(state.clippingPercent >= kLeastClippingPercent)) {
    state.clippingPercent = kDefaultClippingPercent;
  }
  state.flattened = 0;
}

LevelImages13 levels13(std::span<const std::byte> image, std::int32_t frameCount) noexcept {
  const std::size_t size = static_cast<std::size_t>(frameCount) * sizeof(double);
  const auto array = [&](std::size_t index) {
    return image.subspan(kHeaderSize13 + index * size, size);
  };
  return {array(0), array(1), array(2), array(3)};
}

void readFrame13(std::span<const std::byte> image, std::int32_t frameCount, std::int32_t frame,
                 FrameStats& stats, FrameHistogram& histogram) noexcept {
  const std::size_t levelBytes = static_cast<std::size_t>(frameCount) * 4 * sizeof(double);
  const auto entry = image.subspan(
      kHeaderSize13 + levelBytes + static_cast<std::size_t>(frame) * kFrameSize13, kFrameSize13);
  resetFrameStats(stats);
  apply(kStatsMoves, entry, &stats);
  stats.frame = frame;
  apply(kHistogramMoves, entry, &histogram);
  histogram.frame = frame;
}

}  // namespace varilum
