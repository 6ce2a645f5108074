// host/pixel_callbacks.h — filling and copying worlds for effects.
#pragma once

#include <cstdint>

#include "hostapi/callbacks.h"
#include "hostapi/world.h"

namespace host {

// effect_ref; colour or null for all channels 0; area or null for all; world. The depth is the
// world's own; the colour is scaled to it.
std::int32_t fillWorld(PF_ProgPtr, const PF_Pixel*, const PF_Rect*, PF_EffectWorld*);
std::int32_t fillWorld16(PF_ProgPtr, const PF_Pixel16*, const PF_Rect*, PF_EffectWorld*);
// effect_ref; source; destination; area of each or null for all. Areas of different size stretch
// without interpolation.
std::int32_t copyWorld(PF_ProgPtr, PF_EffectWorld*, PF_EffectWorld*, PF_Rect*, PF_Rect*);
// Address of the pixels when the world has this depth, else null.
std::int32_t pixelData8(PF_EffectWorld*, PF_Pixel*, PF_Pixel**);
std::int32_t pixelData16(PF_EffectWorld*, PF_Pixel*, PF_Pixel16**);
// world; out pixel format code
std::int32_t formatOfWorld(const PF_EffectWorld*, std::int32_t*);

}  // namespace host
