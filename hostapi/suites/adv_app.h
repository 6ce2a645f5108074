// hostapi/suites/adv_app.h — the Info panel and other services of the application.
#pragma once

#include <cstdint>

#include "hostapi/world.h"

struct PF_AdvAppSuite2 {
  std::int32_t (*PF_SetProjectDirty)();
  std::int32_t (*PF_SaveProject)();
  std::int32_t (*PF_SaveBackgroundState)();
  std::int32_t (*PF_ForceForeground)();
  std::int32_t (*PF_RestoreBackgroundState)();
  std::int32_t (*PF_RefreshAllWindows)();
  // line 1 or null; line 2 or null
  std::int32_t (*PF_InfoDrawText)(const char*, const char*);
  std::int32_t (*PF_InfoDrawColor)(PF_Pixel);
  std::int32_t (*PF_InfoDrawText3)(const char*, const char*, const char*);
  std::int32_t (*PF_InfoDrawText3Plus)(const char*, const char*, const char*, const char*,
                                       const char*);
  // text to append
  std::int32_t (*PF_AppendInfoText)(const char*);
};

inline constexpr const char* kPFAdvAppSuite = "PF AE Adv App Suite";

inline constexpr std::int32_t kPFAdvAppSuiteVersion2 = 2;
