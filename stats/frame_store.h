// stats/frame_store.h — the records of all frames, and the histograms of the last few.
#pragma once

#include <cstdint>
#include <span>

#include "stats/frame_stats.h"

namespace varilum {

// Stores a frame's statistics and histogram. The frame is clamped into frames; the slot is the one
// that holds this frame already, else the one whose frame is farthest away. The slot chosen is
// written into stats and the frame into histogram. No frames or no slots: nothing happens.
void storeFrameStats(std::span<FrameStats> frames, std::span<FrameHistogram> slots,
                     std::int32_t frame, FrameStats& stats, FrameHistogram& histogram) noexcept;

// Copies a frame's statistics and histogram out (frame clamped as above). When no slot holds the
// frame, histogram is fresh but for its frame index, and the stored record's slot becomes -1.
// No frames or no slots: both come out fresh, carrying the frame index.
void fetchFrameStats(std::span<FrameStats> frames, std::span<FrameHistogram> slots,
                     std::int32_t frame, FrameStats& stats, FrameHistogram& histogram) noexcept;

// Every record and every slot made fresh.
void clearAllFrameStats(std::span<FrameStats> frames, std::span<FrameHistogram> slots) noexcept;

// Only the analysed byte of every record cleared.
void clearAnalyzedFlags(std::span<FrameStats> frames) noexcept;

// Number of records whose analysed byte is set.
std::int32_t countAnalyzed(std::span<const FrameStats> frames) noexcept;

}  // namespace varilum
