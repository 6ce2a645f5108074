// stats/lifecycle.h — making, saving, restoring and destroying an instance's data.
//
// out.sequence_data holds the instance's handle on entry and takes the result. in.in_flags other
// than 0 means a copy that will only ever render: it gets no records and no histograms.
#pragma once

#include <cstdint>

#include "hostapi/command_data.h"

namespace varilum {

// A fresh instance for the layer as in describes it. What the output held is disposed.
// PF_Err_OUT_OF_MEMORY: nothing, or a header without arrays that stays locked, so that the host
// cannot take it for a usable one. PF_Err_INTERNAL_STRUCT_DAMAGED: it would not lock.
std::int32_t setupSequence(const PF_InData& in, PF_OutData& out);

// An instance from a saved image, which is disposed. An image that cannot be trusted gives a fresh
// instance. Live data is kept as it is.
std::int32_t resetupSequence(const PF_InData& in, PF_OutData& out);

// The instance as one image. disposeLive: the image takes the live data's place; its arrays stay
// allocated until the image comes back or goes. Otherwise the live data is left to the host.
// Data that is flat already stays. PF_Err_INTERNAL_STRUCT_DAMAGED: no lock or no memory.
std::int32_t flattenSequence(const PF_InData& in, PF_OutData& out, bool disposeLive);

// The end of an instance, live or flat.
std::int32_t setdownSequence(const PF_InData& in, PF_OutData& out);

}  // namespace varilum
