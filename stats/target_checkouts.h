// stats/target_checkouts.h — the targets of all frames, from the parameters as the host keeps them.
#pragma once

#include <cstdint>

#include "hostapi/command_data.h"
#include "hostapi/parameters.h"
#include "stats/desired_luminance.h"
#include "stats/sequence_state.h"

namespace varilum {

// Time of a frame in the host's units, saturated to 32 bits.
std::int32_t frameTime(const PF_InData& in, std::int32_t frame) noexcept;

// First double of a Luminance value; false when there is no handle or it will not lock.
bool readLuminanceValue(const PF_InData& in, void** value, double& luminance) noexcept;

// Computes the targets into locked arrays, and clears recomputeDesired. The method is the present
// one of params; everything else is checked out at each frame's time. Returns the first error of a
// check-out or check-in. Without params nothing happens.
std::int32_t computeTargets(const PF_InData& in, PF_ParamDef** params, SequenceState& state,
                            const LevelArrays& levels);

// The same for whoever does not hold the arrays: only when all four lock.
std::int32_t recomputeTargets(const PF_InData& in, PF_ParamDef** params, SequenceState& state);

}  // namespace varilum
