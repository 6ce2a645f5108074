// hostapi/layout/suite_aegp_world.cpp — sizes and offsets of hostapi/suites/aegp_world.h, held at
// compile time.
#include "hostapi/layout/assert_layout.h"
#include "hostapi/suites/aegp_world.h"

ASSERT_SIZE(AEGP_WorldSuite3, 104);
ASSERT_ALIGN(AEGP_WorldSuite3, 8);
ASSERT_FIELD(AEGP_WorldSuite3, AEGP_New, 0, 8);
ASSERT_FIELD(AEGP_WorldSuite3, AEGP_Dispose, 8, 8);
ASSERT_FIELD(AEGP_WorldSuite3, AEGP_GetType, 16, 8);
ASSERT_FIELD(AEGP_WorldSuite3, AEGP_GetSize, 24, 8);
ASSERT_FIELD(AEGP_WorldSuite3, AEGP_GetRowBytes, 32, 8);
ASSERT_FIELD(AEGP_WorldSuite3, AEGP_GetBaseAddr8, 40, 8);
ASSERT_FIELD(AEGP_WorldSuite3, AEGP_GetBaseAddr16, 48, 8);
ASSERT_FIELD(AEGP_WorldSuite3, AEGP_GetBaseAddr32, 56, 8);
ASSERT_FIELD(AEGP_WorldSuite3, AEGP_FillOutPFEffectWorld, 64, 8);
ASSERT_FIELD(AEGP_WorldSuite3, AEGP_FastBlur, 72, 8);
ASSERT_FIELD(AEGP_WorldSuite3, AEGP_NewPlatformWorld, 80, 8);
ASSERT_FIELD(AEGP_WorldSuite3, AEGP_DisposePlatformWorld, 88, 8);
ASSERT_FIELD(AEGP_WorldSuite3, AEGP_NewReferenceFromPlatformWorld, 96, 8);
