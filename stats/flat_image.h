// stats/flat_image.h — the saved form of an instance: header, per-frame arrays, histograms.
//
// Layout, little-endian, N frames: 5196 bytes of header; N doubles each of input luminance, input
// spread, desired luminance, desired spread; N FrameStats (176 bytes each); 30 FrameHistogram.
// The last two are absent in images made by render-only copies. Images come from outside and are
// hostile until checked against their size.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "stats/sequence_state.h"

namespace varilum {

// A checked image of version 14: where its parts lie. All spans are within the image; the doubles
// and records in them are unaligned, so copy them out.
struct FlatImage {
  SequenceState header;  // missing tail (older, shorter headers) is filled from a fresh state
  std::int32_t frameCount = 0;
  std::int32_t slotCount = 0;
  std::span<const std::byte> inputLuminance;
  std::span<const std::byte> inputSpread;
  std::span<const std::byte> desiredLuminance;
  std::span<const std::byte> desiredSpread;
  std::span<const std::byte> frameStats;  // empty when absent
  std::span<const std::byte> histograms;  // empty when absent
};

// The format version that an image claims, or 0 when it is too short to claim one.
std::int32_t imageVersion(std::span<const std::byte> image) noexcept;

// Checks a version-14 image against its real size. Nothing when it is truncated or inconsistent.
std::optional<FlatImage> readFlatImage(std::span<const std::byte> image) noexcept;

// Restored levels: anything not finite becomes -1; desired ones also when below -1 or above 255.
void restoreInputLevels(std::span<const std::byte> saved, std::span<double> levels) noexcept;
void restoreDesiredLevels(std::span<const std::byte> saved, std::span<double> levels) noexcept;

// Bytes of the image of a live state, from its size fields.
std::size_t flatImageSize(const SequenceState& state) noexcept;

}  // namespace varilum
