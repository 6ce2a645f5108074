// ui/current_frame.h — the frame under the time cursor, and its statistics at hand.
#pragma once

#include <cstdint>

#include "hostapi/command_data.h"
#include "hostapi/events.h"
#include "hostapi/parameters.h"
#include "plugin/global_state.h"
#include "stats/sequence_arrays.h"
#include "stats/sequence_state.h"

namespace varilum {

struct CurrentFrame {
  std::int32_t shown;  // as the cursor stands, perhaps outside the layer
  std::int32_t index;  // clamped to the layer's frames; -1 in a layer of none
  bool outOfRange;     // clamping moved it
  bool exists;         // index is a frame of the layer

  friend bool operator==(const CurrentFrame&, const CurrentFrame&) = default;
};

// Frame of a time (both in the host's units; time steps below 1 give frame 0) in a layer of
// frameCount frames.
CurrentFrame currentFrame(std::int32_t currentTime, std::int32_t timeStep,
                          std::int32_t frameCount) noexcept;

// Puts the statistics and the histogram of a frame in hand, from what is stored or else by
// measuring the frame now. Failures to measure are left for the panel to show as missing. Copies
// the frame's levels for the mouse, too.
void bringFrameToHand(const GlobalState* global, PF_InData& in, PF_OutData& out,
                      PF_ParamDef** params, PF_EffectWorld* output, PF_EventExtra& event,
                      SequenceState& state, const LevelLocks& levels, const CurrentFrame& frame);

}  // namespace varilum
