// hostapi/layout/suite_aegp_interface.cpp — sizes and offsets of hostapi/suites/aegp_interface.h,
// held at compile time.
#include "hostapi/layout/assert_layout.h"
#include "hostapi/suites/aegp_interface.h"

ASSERT_SIZE(AEGP_PFInterfaceSuite1, 40);
ASSERT_ALIGN(AEGP_PFInterfaceSuite1, 8);
ASSERT_FIELD(AEGP_PFInterfaceSuite1, AEGP_GetEffectLayer, 0, 8);
ASSERT_FIELD(AEGP_PFInterfaceSuite1, AEGP_GetNewEffectForEffect, 8, 8);
ASSERT_FIELD(AEGP_PFInterfaceSuite1, AEGP_ConvertEffectToCompTime, 16, 8);
ASSERT_FIELD(AEGP_PFInterfaceSuite1, AEGP_GetEffectCamera, 24, 8);
ASSERT_FIELD(AEGP_PFInterfaceSuite1, AEGP_GetEffectCameraMatrix, 32, 8);
