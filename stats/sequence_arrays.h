// stats/sequence_arrays.h — an instance's per-frame arrays in host handles.
//
// The header stores their handles; they are only followed in headers that this process made.
#pragma once

#include <cstdint>
#include <span>

#include "access/handle_lock.h"
#include "hostapi/command_data.h"
#include "stats/desired_luminance.h"
#include "stats/live_registry.h"
#include "stats/sequence_state.h"

namespace varilum {

// The handles of a header: records, cache, and the four arrays of levels in saved order.
ArrayHandles arrayHandles(const SequenceState& state) noexcept;
// Puts them into a header, which then owns them.
void setArrayHandles(SequenceState& state, const ArrayHandles& handles) noexcept;

// Disposes all arrays; their handles and sizes become 0.
void disposeArrays(const PF_InData& in, SequenceState& state) noexcept;

// Replaces all arrays by fresh ones for frameCount frames (below 1: none): input levels -1,
// everything else 0 or fresh. renderOnly leaves out records and cache. The analysis is no longer
// complete. PF_Err_OUT_OF_MEMORY: what was allocated before the failure stays.
std::int32_t resizeFrameArrays(const PF_InData& in, SequenceState& state, std::int32_t frameCount,
                               bool renderOnly) noexcept;

// The four arrays of levels, locked. Empty spans where one is absent or will not lock.
class LevelLocks {
 public:
  LevelLocks() = default;
  LevelLocks(const PF_InData& in, const SequenceState& state) noexcept;

  // True when all four are there.
  explicit operator bool() const noexcept;

  std::span<double> inputLuminance() const noexcept { return span(input_); }
  std::span<double> inputSpread() const noexcept { return span(inputSpread_); }
  std::span<double> desiredLuminance() const noexcept { return span(desired_); }
  std::span<double> desiredSpread() const noexcept { return span(desiredSpread_); }
  LevelArrays arrays() const noexcept;

 private:
  std::span<double> span(const Locked<double>& lock) const noexcept;

  std::size_t count_ = 0;
  Locked<double> input_;
  Locked<double> inputSpread_;
  Locked<double> desired_;
  Locked<double> desiredSpread_;
};

// The records and the histogram cache, locked. Both spans are empty unless both lock.
class RecordLocks {
 public:
  RecordLocks(const PF_InData& in, const SequenceState& state) noexcept;

  std::span<FrameStats> frames() const noexcept;
  std::span<FrameHistogram> slots() const noexcept;

 private:
  std::size_t frameCount_;
  std::size_t slotCount_;
  Locked<FrameStats> frames_;
  Locked<FrameHistogram> slots_;
};

// As the functions of stats/frame_store.h, on the arrays of state, which they lock.
void storeFrameStats(const PF_InData& in, const SequenceState& state, std::int32_t frame,
                     FrameStats& stats, FrameHistogram& histogram) noexcept;
void fetchFrameStats(const PF_InData& in, const SequenceState& state, std::int32_t frame,
                     FrameStats& stats, FrameHistogram& histogram) noexcept;

}  // namespace varilum
