// hostapi/layout/suite_world.cpp — sizes and offsets of hostapi/suites/world.h, held at compile
// time.
#include "hostapi/layout/assert_layout.h"
#include "hostapi/suites/world.h"

ASSERT_SIZE(PF_WorldSuite2, 24);
ASSERT_ALIGN(PF_WorldSuite2, 8);
ASSERT_FIELD(PF_WorldSuite2, PF_NewWorld, 0, 8);
ASSERT_FIELD(PF_WorldSuite2, PF_DisposeWorld, 8, 8);
ASSERT_FIELD(PF_WorldSuite2, PF_GetPixelFormat, 16, 8);
