// stats/restore.h — the contents of a saved image, put into a fresh instance.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "hostapi/command_data.h"
#include "stats/sequence_state.h"

namespace varilum {

inline constexpr std::int32_t kFormatVersion13 = 13;

// An image of the present version. One that is truncated or inconsistent leaves state as it is.
// The image's frame count wins over the state's. False: the arrays for it could not be had, and
// state is of no use any more.
bool restoreFlatImage(const PF_InData& in, std::span<const std::byte> image, SequenceState& state);

// An image of version 13. One made for another number of frames leaves state as it is.
void restoreFlatImage13(const PF_InData& in, std::span<const std::byte> image,
                        SequenceState& state);

}  // namespace varilum
