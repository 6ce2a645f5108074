// stats/frame_store.cpp — keeping and finding the records of frames.
#include "stats/frame_store.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace varilum {
namespace {

// Stored frame and slot indices may come from a saved image, so they are checked at every use.
bool slotHolds(std::span<const FrameHistogram> slots, std::int32_t slot, std::int32_t frame) {
  return slot >= 0 && static_cast<std::size_t>(slot) < slots.size() &&
         slots[static_cast<std::size_t>(slot)].frame == frame;
}

std::int32_t clampFrame(std::span<const FrameStats> frames, std::int32_t frame) {
  return std::clamp(frame, 0, static_cast<std::int32_t>(frames.size()) - 1);
}

// The slot that holds a frame, or -1.
std::int32_t findSlot(std::span<const FrameHistogram> slots, std::int32_t frame) {
  for (std::size_t i = 0; i < slots.size(); ++i) {
    if (slots[i].frame == frame) return static_cast<std::int32_t>(i);
  }
  return -1;
}

// The first of the slots whose frame is farthest away; an empty one counts as frame -1.
std::int32_t farthestSlot(std::span<const FrameHistogram> slots, std::int32_t frame) {
  std::int32_t farthest = 0;
  std::int64_t farthestDistance = 0;
  for (std::size_t i = 0; i < slots.size(); ++i) {
    const std::int64_t distance = std::abs(std::int64_t{slots[i].frame} - frame);
    if (distance > farthestDistance) {
      farthest = static_cast<std::int32_t>(i);
      farthestDistance = distance;
    }
  }
  return farthest;
}

}  // namespace

void storeFrameStats(std::span<FrameStats> frames, std::span<FrameHistogram> slots,
                     std::int32_t frame, FrameStats& stats, FrameHistogram& histogram) noexcept {
  if (frames.empty() || slots.empty()) return;
  frame = clampFrame(frames, frame);
  if (!slotHolds(slots, stats.slot, frame)) {
    const std::int32_t held = findSlot(slots, frame);
    stats.slot = held >= 0 ? held : farthestSlot(slots, frame);
  }
  histogram.frame = frame;
  slots[static_cast<std::size_t>(stats.slot)] = histogram;
  frames[static_cast<std::size_t>(frame)] = stats;
}

void fetchFrameStats(std::span<FrameStats> frames, std::span<FrameHistogram> slots,
                     std::int32_t frame, FrameStats& stats, FrameHistogram& histogram) noexcept {
  if (!frames.empty()) frame = clampFrame(frames, frame);
  if (frames.empty() || slots.empty()) {
    resetFrameStats(stats);
    resetFrameHistogram(histogram);
    stats.frame = frame;
    histogram.frame = frame;
    return;
  }
  FrameStats& stored = frames[static_cast<std::size_t>(frame)];
  if (!slotHolds(slots, stored.slot, frame)) stored.slot = findSlot(slots, frame);
  if (stored.slot >= 0) {
    histogram = slots[static_cast<std::size_t>(stored.slot)];
  } else {
    resetFrameHistogram(histogram);
    histogram.frame = frame;
  }
  stats = stored;
}

void clearAllFrameStats(std::span<FrameStats> frames, std::span<FrameHistogram> slots) noexcept {
  for (FrameStats& stats : frames) resetFrameStats(stats);
  for (FrameHistogram& histogram : slots) resetFrameHistogram(histogram);
}

void clearAnalyzedFlags(std::span<FrameStats> frames) noexcept {
  for (FrameStats& stats : frames) stats.analyzed = 0;
}

std::int32_t countAnalyzed(std::span<const FrameStats> frames) noexcept {
  return static_cast<std::int32_t>(std::count_if(
      frames.begin(), frames.end(), [](const FrameStats& stats) { return stats.analyzed != 0; }));
}

}  // namespace varilum
