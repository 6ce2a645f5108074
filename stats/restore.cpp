// stats/restore.cpp — the contents of a saved image, put into a fresh instance.
#include "stats/restore.h"

#include <algorithm>
#include <cstring>

#include "stats/flat_image.h"
#include "stats/flat_image_13.h"
#include "stats/frame_store.h"
#include "stats/sequence_arrays.h"

namespace varilum {
namespace {

template <class Record>
Record recordAt(std::span<const std::byte> records, std::size_t index) noexcept {
  Record record;
  std::memcpy(&record, records.data() + index * sizeof(Record), sizeof record);
  return record;
}

template <class Record>
void copyRecords(std::span<const std::byte> saved, std::span<Record> records) noexcept {
  if (records.empty() || saved.empty()) return;
  std::memcpy(records.data(), saved.data(), std::min(saved.size(), records.size_bytes()));
}

void restoreLevels(const FlatImage& image, const LevelLocks& levels) noexcept {
  restoreInputLevels(image.inputLuminance, levels.inputLuminance());
  restoreInputLevels(image.inputSpread, levels.inputSpread());
  restoreDesiredLevels(image.desiredLuminance, levels.desiredLuminance());
  restoreDesiredLevels(image.desiredSpread, levels.desiredSpread());
}

// A cache of another size: its histograms belong to the first frames, in order.
void restoreFromOtherCache(const FlatImage& image, const RecordLocks& records) noexcept {
  const std::span<FrameStats> frames = records.frames();
  const std::size_t count = std::min(frames.size(), image.frameStats.size() / kFrameStatsSize);
  const std::size_t cached =
      std::min<std::size_t>(kHistogramSlots, image.histograms.size() / sizeof(FrameHistogram));
  for (std::size_t i = 0; i < count; ++i) {
    const auto frame = static_cast<std::int32_t>(i);
    auto stats = recordAt<FrameStats>(image.frameStats, i);
    stats.frame = frame;
    if (i < cached) {
      auto histogram = recordAt<FrameHistogram>(image.histograms, i);
      histogram.frame = frame;
      storeFrameStats(frames, records.slots(), frame, stats, histogram);
    } else {
      stats.slot = -1;
      frames[i] = stats;
    }
  }
}

}  // namespace

bool restoreFlatImage(const PF_InData& in, std::span<const std::byte> bytes, SequenceState& state) {
  const auto image = readFlatImage(bytes);
  if (!image) return true;
  const bool renderOnly = in.in_flags != 0;
  if (image->frameCount != state.frameCount || state.frameCount < 1 || state.levelArrayBytes == 0) {
    if (resizeFrameArrays(in, state, image->frameCount, renderOnly) != 0) return false;
  }

  const SequenceState own = state;
  state = image->header;
  state.frameCount = own.frameCount;
  state.slotCount = kHistogramSlots;
  state.frameStatsBytes = own.frameStatsBytes;
  state.histogramCacheBytes = own.histogramCacheBytes;
  state.levelArrayBytes = own.levelArrayBytes;
  state.allocatedBytes = own.allocatedBytes;
  setArrayHandles(state, arrayHandles(own));
  state.flattened = 0;
  resetFrameStats(state.currentStats);
  resetFrameHistogram(state.currentHistogram);

  restoreLevels(*image, LevelLocks{in, state});
  if (renderOnly) return true;
  const RecordLocks records{in, state};
  if (image->slotCount == kHistogramSlots) {
    copyRecords(image->frameStats, records.frames());
    copyRecords(image->histograms, records.slots());
  } else {
    restoreFromOtherCache(*image, records);
  }
  return true;
}

void restoreFlatImage13(const PF_InData& in, std::span<const std::byte> image,
                        SequenceState& state) {
  const std::int32_t frameCount = state.frameCount;
  if (!fitsFlatImage13(image, frameCount)) return;
  readHeader13(image, state);
  state.flattened = 0;

  const LevelImages13 saved = levels13(image, frameCount);
  const LevelLocks levels{in, state};
  restoreInputLevels(saved.inputLuminance, levels.inputLuminance());
  restoreInputLevels(saved.inputSpread, levels.inputSpread());
  restoreInputLevels(saved.desiredLuminance, levels.desiredLuminance());
  restoreInputLevels(saved.desiredSpread, levels.desiredSpread());

  const RecordLocks records{in, state};
  for (std::int32_t frame = 0; frame < frameCount; ++frame) {
    // The header's fields are packed; the records in hand are worked on outside of it.
    FrameStats stats;
    FrameHistogram histogram;
    readFrame13(image, frameCount, frame, stats, histogram);
    storeFrameStats(records.frames(), records.slots(), frame, stats, histogram);
    state.currentStats = stats;
    state.currentHistogram = histogram;
  }
}

}  // namespace varilum
