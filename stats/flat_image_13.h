// stats/flat_image_13.h — images saved by the previous format version, read only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "stats/sequence_state.h"

namespace varilum {

// True when an image of version 13 holds exactly frameCount frames' worth of data: its size covers
// them, and is not that of another whole number of frames.
bool fitsFlatImage13(std::span<const std::byte> image, std::int32_t frameCount) noexcept;

// Copies the header fields that both versions know into state. The image fits (above).
void readHeader13(std::span<const std::byte> image, SequenceState& state) noexcept;

// The four arrays of the image, frameCount doubles each, unaligned.
struct LevelImages13 {
  std::span<const std::byte> inputLuminance, inputSpread, desiredLuminance, desiredSpread;
};
LevelImages13 levels13(std::span<const std::byte> image, std::int32_t frameCount) noexcept;

// One frame's records, with their frame index set to frame.
void readFrame13(std::span<const std::byte> image, std::int32_t frameCount, std::int32_t frame,
                 FrameStats& stats, FrameHistogram& histogram) noexcept;

}  // namespace varilum
