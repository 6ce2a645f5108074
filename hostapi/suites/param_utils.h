// hostapi/suites/param_utils.h — redefining parameters and asking about their state.
#pragma once

#include <cstdint>

#include "hostapi/scalars.h"

struct A_Time;
struct PF_ParamDef;
struct PF_State;

struct PF_ParamUtilsSuite3 {
  // effect_ref of in_data; parameter index; replacement definition (host reads the appearance
  // fields)
  std::int32_t (*PF_UpdateParamUI)(PF_ProgPtr, std::int32_t, const PF_ParamDef*);
  std::int32_t (*PF_GetCurrentState)(PF_ProgPtr, std::int32_t, const A_Time*, const A_Time*,
                                     PF_State*);
  std::int32_t (*PF_AreStatesIdentical)(PF_ProgPtr, const PF_State*, const PF_State*,
                                        std::uint8_t*);
  std::int32_t (*PF_IsIdenticalCheckout)(PF_ProgPtr, std::int32_t, std::int32_t, std::int32_t,
                                         std::uint32_t, std::int32_t, std::int32_t, std::uint32_t,
                                         char*);
  std::int32_t (*PF_FindKeyframeTime)(PF_ProgPtr, std::int32_t, std::int32_t, std::uint32_t,
                                      std::int32_t, char*, std::int32_t*, std::int32_t*,
                                      std::uint32_t*);
  std::int32_t (*PF_GetKeyframeCount)(PF_ProgPtr, std::int32_t, std::int32_t*);
  std::int32_t (*PF_CheckoutKeyframe)(PF_ProgPtr, std::int32_t, std::int32_t, std::int32_t*,
                                      std::uint32_t*, PF_ParamDef*);
  std::int32_t (*PF_CheckinKeyframe)(PF_ProgPtr, PF_ParamDef*);
  std::int32_t (*PF_KeyIndexToTime)(PF_ProgPtr, std::int32_t, std::int32_t, std::int32_t*,
                                    std::uint32_t*);
};

inline constexpr const char* kPFParamUtilsSuite = "PF Param Utils Suite";

inline constexpr std::int32_t kPFParamUtilsSuiteVersion3 = 3;

inline constexpr std::int32_t PF_TimeDir_GREATER_THAN = 0;
inline constexpr std::int32_t PF_TimeDir_LESS_THAN = 1;
inline constexpr std::int32_t PF_TimeDir_GREATER_THAN_OR_EQUAL = 4096;
inline constexpr std::int32_t PF_TimeDir_LESS_THAN_OR_EQUAL = 4097;
