// hostapi/suites/aegp_world.h — images in AEGP's hands.
#pragma once

#include <cstdint>

#include "hostapi/scalars.h"
#include "hostapi/world.h"

struct PF_Pixel;
struct PF_Pixel16;
struct PF_PixelFloat;

struct AEGP_WorldSuite3 {
  std::int32_t (*AEGP_New)(std::int32_t, std::int32_t, std::int32_t, std::int32_t, AEGP_WorldH*);
  std::int32_t (*AEGP_Dispose)(AEGP_WorldH);
  // world; out world type
  std::int32_t (*AEGP_GetType)(AEGP_WorldH, std::int32_t*);
  // world; out width; out height
  std::int32_t (*AEGP_GetSize)(AEGP_WorldH, std::int32_t*, std::int32_t*);
  // world; out row bytes
  std::int32_t (*AEGP_GetRowBytes)(AEGP_WorldH, std::uint32_t*);
  std::int32_t (*AEGP_GetBaseAddr8)(AEGP_WorldH, PF_Pixel**);
  std::int32_t (*AEGP_GetBaseAddr16)(AEGP_WorldH, PF_Pixel16**);
  std::int32_t (*AEGP_GetBaseAddr32)(AEGP_WorldH, PF_PixelFloat**);
  // world; out effect world to fill
  std::int32_t (*AEGP_FillOutPFEffectWorld)(AEGP_WorldH, PF_EffectWorld*);
  std::int32_t (*AEGP_FastBlur)(double, std::int32_t, std::int32_t, AEGP_WorldH);
  std::int32_t (*AEGP_NewPlatformWorld)(std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                                        AEGP_PlatformWorldH*);
  std::int32_t (*AEGP_DisposePlatformWorld)(AEGP_PlatformWorldH);
  std::int32_t (*AEGP_NewReferenceFromPlatformWorld)(std::int32_t, AEGP_PlatformWorldH,
                                                     AEGP_WorldH*);
};

inline constexpr const char* kAEGPWorldSuite = "AEGP World Suite";

inline constexpr std::int32_t kAEGPWorldSuiteVersion3 = 3;
