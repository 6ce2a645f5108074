// stats/invalidation.h — dropping an instance's analysis, and counting how much of it there is.
#pragma once

#include "hostapi/command_data.h"
#include "stats/sequence_state.h"

namespace varilum {

// Everything measured is dropped: records, histograms, all levels, the frame in hand.
void invalidateAll(const PF_InData& in, SequenceState& state) noexcept;

// The analysis counts as not made and its targets are dropped; what was measured stays, so that
// frames whose settings did not change need not be read again.
void invalidateDesired(const PF_InData& in, SequenceState& state) noexcept;

// True when every frame is analysed, or there are none. Writes the status text with the count,
// unless the records will not lock, which counts as false.
bool countAnalyzedFrames(const PF_InData& in, SequenceState& state) noexcept;

// Brings the arrays to the layer's present number of frames, dropping the analysis when that
// changed. Returns PF_Err_OUT_OF_MEMORY when the new arrays cannot be had; they are asked for again
// at the next call, which then counts as success either way.
std::int32_t resyncFrameCount(const PF_InData& in, SequenceState& state) noexcept;

}  // namespace varilum
