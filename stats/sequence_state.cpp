// stats/sequence_state.cpp — the creation values of an instance.
#include "stats/sequence_state.h"

namespace varilum {

SequenceState freshSequenceState() noexcept {
  SequenceState state{};
  state.layoutWord0 = 4;
  state.layoutWord1 = 2;
  state.formatVersion = kFormatVersion;
  state.slotCount = kHistogramSlots;
  state.recomputeDesired = 1;
  // A frame rendered before the first table was built comes out as it went in.
  for (int level = 0; level < kLevels; ++level) {
    state.correctionTable[level] = static_cast<std::uint8_t>(level);
  }
  state.correctionMethod = kCorrectionShift;
  state.deflickerMethod = kDeflickerKeyframes;
  state.clippingPercent = 99.0;
  state.currentGain = 1.0;
  state.smallestGain = 1.0;
  state.largestGain = 1.0;
  resetFrameStats(state.currentStats);
  resetFrameHistogram(state.currentHistogram);
  return state;
}

}  // namespace varilum
