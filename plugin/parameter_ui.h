// plugin/parameter_ui.h — labels and greying of the controls.
#pragma once

#include <cstdint>

#include "plugin/command.h"

namespace varilum {

// Redefines what depends on the control at index: 7 and 8, the labels of Analyze and Clear; 11, 18,
// 19 and 26, which controls apply. Values stay. Returns the first error; 0 for other indices. May
// throw error codes, when a suite is missing. [UI thread]
std::int32_t updateParamUi(const GlobalState& global, const PF_InData& in, PF_ParamDef** params,
                           std::int32_t index, SequenceState& state);

// All of them in After Effects, with the result of the last; elsewhere the label of Clear, and only
// when its text changed, since those hosts redraw at every call.
std::int32_t updateParamUis(const GlobalState& global, const PF_InData& in, PF_ParamDef** params,
                            SequenceState& state);

}  // namespace varilum
