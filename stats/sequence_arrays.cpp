// stats/sequence_arrays.cpp — an instance's per-frame arrays in host handles.
#include "stats/sequence_arrays.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "hostapi/commands.h"
#include "stats/frame_store.h"

namespace varilum {
namespace {

void** toHandle(StoredHandle stored) noexcept {
  return reinterpret_cast<void**>(stored);
}
StoredHandle toStored(void** handle) noexcept {
  return reinterpret_cast<StoredHandle>(handle);
}

// An array filled with copies of one value; null when memory or a lock is refused.
template <class Value>
void** newArray(const PF_InData& in, std::size_t count, const Value& value) noexcept {
  void** handle = in.utils->host_new_handle(count * sizeof(Value));
  if (handle == nullptr) return nullptr;
  const Locked<Value> lock{in, handle};
  if (!lock) {
    in.utils->host_dispose_handle(handle);
    return nullptr;
  }
  std::fill_n(lock.get(), count, value);
  return handle;
}

std::size_t levelCount(const SequenceState& state) noexcept {
  const std::int64_t frames = std::max(state.frameCount, 0);
  return static_cast<std::size_t>(
      std::min<std::int64_t>(frames, state.levelArrayBytes / std::int64_t{sizeof(double)}));
}

}  // namespace

ArrayHandles arrayHandles(const SequenceState& state) noexcept {
  return {toHandle(state.frameStats),       toHandle(state.histogramCache),
          toHandle(state.inputLuminance),   toHandle(state.inputSpread),
          toHandle(state.desiredLuminance), toHandle(state.desiredSpread)};
}

void setArrayHandles(SequenceState& state, const ArrayHandles& handles) noexcept {
  state.frameStats = toStored(handles[0]);
  state.histogramCache = toStored(handles[1]);
  state.inputLuminance = toStored(handles[2]);
  state.inputSpread = toStored(handles[3]);
  state.desiredLuminance = toStored(handles[4]);
  state.desiredSpread = toStored(handles[5]);
}

void disposeArrays(const PF_InData& in, SequenceState& state) noexcept {
  for (void** handle : arrayHandles(state)) {
    if (handle != nullptr) in.utils->host_dispose_handle(handle);
  }
  setArrayHandles(state, ArrayHandles{});
  state.frameStatsBytes = 0;
  state.histogramCacheBytes = 0;
  state.levelArrayBytes = 0;
  state.allocatedBytes = 0;
}

std::int32_t resizeFrameArrays(const PF_InData& in, SequenceState& state, std::int32_t frameCount,
                               bool renderOnly) noexcept {
  disposeArrays(in, state);
  state.analysisComplete = 0;
  state.frameCount = std::max(frameCount, 0);
  if (frameCount < 1) return 0;
  if (frameCount > kMaxFrames) return PF_Err_OUT_OF_MEMORY;

  const auto frames = static_cast<std::size_t>(frameCount);
  // Through a copy: the header's own fields are packed.
  ArrayHandles handles{};
  auto& [records, cache, input, inputSpread, desired, desiredSpread] = handles;
  const auto allocate = [&](void**& handle, std::size_t count, const auto& value) {
    handle = newArray(in, count, value);
    setArrayHandles(state, handles);
    return handle != nullptr;
  };
  if (!allocate(input, frames, kNotAnalyzed) || !allocate(inputSpread, frames, 0.0) ||
      !allocate(desired, frames, 0.0) || !allocate(desiredSpread, frames, 0.0)) {
    return PF_Err_OUT_OF_MEMORY;
  }
  state.levelArrayBytes = static_cast<std::uint32_t>(frames * sizeof(double));
  std::uint64_t total = 4 * std::uint64_t{state.levelArrayBytes};

  if (!renderOnly) {
    FrameStats freshStats;
    resetFrameStats(freshStats);
    if (!allocate(records, frames, freshStats)) return PF_Err_OUT_OF_MEMORY;
    state.frameStatsBytes = static_cast<std::uint32_t>(frames * kFrameStatsSize);

    FrameHistogram freshHistogram;
    resetFrameHistogram(freshHistogram);
    if (!allocate(cache, kHistogramSlots, freshHistogram)) return PF_Err_OUT_OF_MEMORY;
    state.slotCount = kHistogramSlots;
    state.histogramCacheBytes = static_cast<std::uint32_t>(kHistogramCacheSize);
    total += state.frameStatsBytes + std::uint64_t{kHistogramCacheSize};
  }
  state.allocatedBytes = static_cast<std::uint32_t>(
      std::min<std::uint64_t>(total, std::numeric_limits<std::uint32_t>::max()));
  return 0;
}

LevelLocks::LevelLocks(const PF_InData& in, const SequenceState& state) noexcept
    : count_(levelCount(state)),
      input_(in, toHandle(state.inputLuminance)),
      inputSpread_(in, toHandle(state.inputSpread)),
      desired_(in, toHandle(state.desiredLuminance)),
      desiredSpread_(in, toHandle(state.desiredSpread)) {}

LevelLocks::operator bool() const noexcept {
  return count_ > 0 && input_ && inputSpread_ && desired_ && desiredSpread_;
}

LevelArrays LevelLocks::arrays() const noexcept {
  return {inputLuminance(), inputSpread(), desiredLuminance(), desiredSpread()};
}

std::span<double> LevelLocks::span(const Locked<double>& lock) const noexcept {
  return lock ? std::span<double>{lock.get(), count_} : std::span<double>{};
}

RecordLocks::RecordLocks(const PF_InData& in, const SequenceState& state) noexcept
    : frameCount_(std::min<std::size_t>(static_cast<std::size_t>(std::max(state.frameCount, 0)),
                                        state.frameStatsBytes / kFrameStatsSize)),
      slotCount_(state.histogramCacheBytes / sizeof(FrameHistogram)),
      frames_(in, toHandle(state.frameStats)),
      slots_(in, toHandle(state.histogramCache)) {}

std::span<FrameStats> RecordLocks::frames() const noexcept {
  return frames_ && slots_ ? std::span{frames_.get(), frameCount_} : std::span<FrameStats>{};
}

std::span<FrameHistogram> RecordLocks::slots() const noexcept {
  return frames_ && slots_ ? std::span{slots_.get(), slotCount_} : std::span<FrameHistogram>{};
}

void storeFrameStats(const PF_InData& in, const SequenceState& state, std::int32_t frame,
                     FrameStats& stats, FrameHistogram& histogram) noexcept {
  const RecordLocks records{in, state};
  storeFrameStats(records.frames(), records.slots(), frame, stats, histogram);
}

void fetchFrameStats(const PF_InData& in, const SequenceState& state, std::int32_t frame,
                     FrameStats& stats, FrameHistogram& histogram) noexcept {
  const RecordLocks records{in, state};
  fetchFrameStats(records.frames(), records.slots(), frame, stats, histogram);
}

}  // namespace varilum
