// hostapi/suites/custom_ui.h — drawing reference and render manager of a panel.
#pragma once

#include <cstdint>

#include "hostapi/scalars.h"

struct PF_Context;
struct PF_EventExtra;
struct PF_InData;

struct PF_EffectCustomUISuite1 {
  // event context handle; out drawing reference
  std::int32_t (*PF_GetDrawingReference)(PF_Context**, DRAWBOT_DrawRef*);
};

struct PF_EffectCustomUISuite2 {
  // event context handle; out drawing reference
  std::int32_t (*PF_GetDrawingReference)(PF_Context**, DRAWBOT_DrawRef*);
  // in_data; event record (extra); out manager
  std::int32_t (*PF_GetContextAsyncManager)(PF_InData*, PF_EventExtra*, PF_AsyncManagerP*);
};

inline constexpr const char* kPFEffectCustomUISuite = "PF Effect Custom UI Suite";

inline constexpr std::int32_t kPFEffectCustomUISuiteVersion1 = 1;
inline constexpr std::int32_t kPFEffectCustomUISuiteVersion2 = 2;
