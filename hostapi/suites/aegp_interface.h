// hostapi/suites/aegp_interface.h — from an effect instance to AEGP references.
#pragma once

#include <cstdint>

#include "hostapi/scalars.h"

struct A_Matrix4;
struct A_Time;

struct AEGP_PFInterfaceSuite1 {
  // effect_ref; out layer
  std::int32_t (*AEGP_GetEffectLayer)(PF_ProgPtr, AEGP_LayerH*);
  // plug-in id; effect_ref; out effect reference (caller disposes)
  std::int32_t (*AEGP_GetNewEffectForEffect)(std::int32_t, PF_ProgPtr, AEGP_EffectRefH*);
  // effect_ref; layer time; time scale of in_data; out composition time
  std::int32_t (*AEGP_ConvertEffectToCompTime)(PF_ProgPtr, std::int32_t, std::uint32_t, A_Time*);
  std::int32_t (*AEGP_GetEffectCamera)(PF_ProgPtr, const A_Time*, AEGP_LayerH*);
  std::int32_t (*AEGP_GetEffectCameraMatrix)(PF_ProgPtr, const A_Time*, A_Matrix4*, double*,
                                             std::int16_t*, std::int16_t*);
};

inline constexpr const char* kAEGPPFInterfaceSuite = "AEGP PF Interface Suite";

inline constexpr std::int32_t kAEGPPFInterfaceSuiteVersion1 = 1;
