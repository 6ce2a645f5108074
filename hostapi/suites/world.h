// hostapi/suites/world.h — making images and asking for their pixel format.
#pragma once

#include <cstdint>

#include "hostapi/scalars.h"
#include "hostapi/world.h"

struct PF_WorldSuite2 {
  // effect_ref; width; height; non-zero = clear; pixel format code; out world
  std::int32_t (*PF_NewWorld)(PF_ProgPtr, std::int32_t, std::int32_t, char, std::int32_t,
                              PF_EffectWorld*);
  // effect_ref; world
  std::int32_t (*PF_DisposeWorld)(PF_ProgPtr, PF_EffectWorld*);
  // world; out pixel format code
  std::int32_t (*PF_GetPixelFormat)(const PF_EffectWorld*, std::int32_t*);
};

inline constexpr const char* kPFWorldSuite = "PF World Suite";

inline constexpr std::int32_t kPFWorldSuiteVersion2 = 2;
