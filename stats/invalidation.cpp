// stats/invalidation.cpp — dropping an instance's analysis, and counting how much of it there is.
#include "stats/invalidation.h"

#include <algorithm>

#include "stats/frame_count.h"
#include "stats/frame_store.h"
#include "stats/sequence_arrays.h"
#include "stats/status_text.h"

namespace varilum {
namespace {

void forgetTargets(const LevelLocks& levels) noexcept {
  std::ranges::fill(levels.desiredLuminance(), kNotAnalyzed);
  std::ranges::fill(levels.desiredSpread(), kNotAnalyzed);
}

void markUnanalyzed(SequenceState& state) noexcept {
  state.analysisComplete = 0;
  resetFrameStats(state.currentStats);
  resetFrameHistogram(state.currentHistogram);
  formatStatusText(state, 0, state.frameCount);
}

}  // namespace

void invalidateAll(const PF_InData& in, SequenceState& state) noexcept {
  markUnanalyzed(state);
  const RecordLocks records{in, state};
  clearAllFrameStats(records.frames(), records.slots());
  const LevelLocks levels{in, state};
  std::ranges::fill(levels.inputLuminance(), kNotAnalyzed);
  std::ranges::fill(levels.inputSpread(), kNotAnalyzed);
  forgetTargets(levels);
}

void invalidateDesired(const PF_InData& in, SequenceState& state) noexcept {
  markUnanalyzed(state);
  const RecordLocks records{in, state};
  clearAnalyzedFlags(records.frames());
  forgetTargets(LevelLocks{in, state});
}

bool countAnalyzedFrames(const PF_InData& in, SequenceState& state) noexcept {
  if (state.frameCount < 1 || state.frameStats == 0) {
    formatStatusText(state, 0, state.frameCount);
    return true;
  }
  const Locked<FrameStats> frames{in, arrayHandles(state)[0]};
  if (!frames) return false;
  const std::int32_t count =
      countAnalyzed({frames.get(), static_cast<std::size_t>(state.frameCount)});
  formatStatusText(state, count, state.frameCount);
  return count == state.frameCount;
}

std::int32_t resyncFrameCount(const PF_InData& in, SequenceState& state) noexcept {
  const std::int32_t frames = layerFrameCount(in.total_time, in.time_step);
  const bool changed = frames != state.frameCount;
  // Arrays that memory was short for are asked for again, without a word: it was reported then.
  const bool missing = state.frameCount > 0 && state.levelArrayBytes == 0;
  if (!changed && !missing) return 0;
  const std::int32_t error = resizeFrameArrays(in, state, frames, false);
  if (error != 0) disposeArrays(in, state);
  invalidateAll(in, state);
  return changed ? error : 0;
}

}  // namespace varilum
