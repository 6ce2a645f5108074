// ui/panel_parameters.h — the parameters that the panel's mouse actions write.
#pragma once

#include "hostapi/command_data.h"
#include "hostapi/parameters.h"

namespace varilum {

// Both write the Luminance value in place and mark the parameter changed. False, and nothing done,
// when it has no value or that will not lock.
bool setLuminance(const PF_InData& in, PF_ParamDef** params, double level) noexcept;
bool lowerLuminance(const PF_InData& in, PF_ParamDef** params, double difference) noexcept;

// Writes the Shift spread slider and marks it changed.
void setShiftSpread(PF_ParamDef** params, double spread) noexcept;

}  // namespace varilum
