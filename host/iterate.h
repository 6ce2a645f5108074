// host/iterate.h — running an effect's function over the pixels of an image.
#pragma once

#include <cstdint>

#include "hostapi/command_data.h"
#include "hostapi/geometry.h"
#include "hostapi/world.h"

namespace host {

// in_data; progress start; progress end (0 = none); source or null; area in the destination's
// buffer or null for all; context; pixel function; destination. Clipped to both worlds. With no
// source the function gets the destination's pixel as both. Gives the first non-zero result of the
// function, 517 when the user said stop, or 516 for unusable arguments.
std::int32_t iterate8(PF_InData*, std::int32_t, std::int32_t, PF_EffectWorld*, const PF_Rect*,
                      void*, PF_IteratePixel8Func, PF_EffectWorld*);
std::int32_t iterate16(PF_InData*, std::int32_t, std::int32_t, PF_EffectWorld*, const PF_Rect*,
                       void*, PF_IteratePixel16Func, PF_EffectWorld*);
std::int32_t iterateFloat(PF_InData*, std::int32_t, std::int32_t, PF_EffectWorld*, const PF_Rect*,
                          void*, PF_IteratePixelFloatFunc, PF_EffectWorld*);
// count or -1 for one a thread; context; function of context, thread, index, count
std::int32_t iterateGeneric(std::int32_t, void*,
                            std::int32_t (*)(void*, std::int32_t, std::int32_t, std::int32_t));

}  // namespace host
