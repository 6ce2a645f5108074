// ui/click.h — what the mouse does in the panel.
#pragma once

#include <cstdint>

#include "hostapi/command_data.h"
#include "hostapi/events.h"
#include "hostapi/parameters.h"
#include "stats/sequence_state.h"

namespace varilum {

// What a click began, in the third of the four numbers that the host keeps with it and its drags.
inline constexpr std::int64_t kClickIdle = 0;
inline constexpr std::int64_t kClickInputMarker = 1;
inline constexpr std::int64_t kClickDragHandle = 3;

// A click on the input marker takes the frame's own level and spread as the desired ones; one on
// the desired handle begins a drag; one elsewhere whose button is up already nudges the level.
// state may be null: nothing happens. The event counts as handled in any case.
void handleClick(const PF_InData& in, PF_ParamDef** params, PF_EventExtra& event,
                 SequenceState* state) noexcept;

// Sets the desired level to where the handle was dragged, in whole levels.
void handleDrag(const PF_InData& in, PF_ParamDef** params, PF_EventExtra& event,
                SequenceState* state) noexcept;

}  // namespace varilum
