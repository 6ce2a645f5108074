// hostapi/suites/aegp_layer_render_options.h — what to render of a layer.
#pragma once

#include <cstdint>

#include "hostapi/geometry.h"
#include "hostapi/scalars.h"

struct AEGP_LayerRenderOptionsSuite2 {
  // plug-in id; layer; out options (caller disposes)
  std::int32_t (*AEGP_NewFromLayer)(std::int32_t, AEGP_LayerH, AEGP_LayerRenderOptionsH*);
  // plug-in id; effect reference; out options (caller disposes)
  std::int32_t (*AEGP_NewFromUpstreamOfEffect)(std::int32_t, AEGP_EffectRefH,
                                               AEGP_LayerRenderOptionsH*);
  // plug-in id; effect reference; out options (caller disposes); host UI thread only
  std::int32_t (*AEGP_NewFromDownstreamOfEffect)(std::int32_t, AEGP_EffectRefH,
                                                 AEGP_LayerRenderOptionsH*);
  std::int32_t (*AEGP_Duplicate)(std::int32_t, AEGP_LayerRenderOptionsH, AEGP_LayerRenderOptionsH*);
  // options
  std::int32_t (*AEGP_Dispose)(AEGP_LayerRenderOptionsH);
  // options; time, 8-byte record by value
  std::int32_t (*AEGP_SetTime)(AEGP_LayerRenderOptionsH, A_Time);
  std::int32_t (*AEGP_GetTime)(AEGP_LayerRenderOptionsH, A_Time*);
  std::int32_t (*AEGP_SetTimeStep)(AEGP_LayerRenderOptionsH, A_Time);
  std::int32_t (*AEGP_GetTimeStep)(AEGP_LayerRenderOptionsH, A_Time*);
  // options; world type
  std::int32_t (*AEGP_SetWorldType)(AEGP_LayerRenderOptionsH, std::int32_t);
  std::int32_t (*AEGP_GetWorldType)(AEGP_LayerRenderOptionsH, std::int32_t*);
  // options; x divisor; y divisor
  std::int32_t (*AEGP_SetDownsampleFactor)(AEGP_LayerRenderOptionsH, std::int16_t, std::int16_t);
  std::int32_t (*AEGP_GetDownsampleFactor)(AEGP_LayerRenderOptionsH, std::int16_t*, std::int16_t*);
  std::int32_t (*AEGP_SetMatteMode)(AEGP_LayerRenderOptionsH, std::int32_t);
  std::int32_t (*AEGP_GetMatteMode)(AEGP_LayerRenderOptionsH, std::int32_t*);
};

inline constexpr const char* kAEGPLayerRenderOptionsSuite = "AEGP Layer Render Options Suite";

inline constexpr std::int32_t kAEGPLayerRenderOptionsSuiteVersion2 = 2;

inline constexpr std::int32_t AEGP_WorldType_NONE = 0;
inline constexpr std::int32_t AEGP_WorldType_8 = 1;
inline constexpr std::int32_t AEGP_WorldType_16 = 2;
inline constexpr std::int32_t AEGP_WorldType_32 = 3;

inline constexpr std::int32_t AEGP_MatteMode_STRAIGHT = 0;
inline constexpr std::int32_t AEGP_MatteMode_PREMUL_BLACK = 1;
inline constexpr std::int32_t AEGP_MatteMode_PREMUL_BG_COLOR = 2;
