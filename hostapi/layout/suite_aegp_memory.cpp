// hostapi/layout/suite_aegp_memory.cpp — sizes and offsets of hostapi/suites/aegp_memory.h, held at
// compile time.
#include "hostapi/layout/assert_layout.h"
#include "hostapi/suites/aegp_memory.h"

ASSERT_SIZE(AEGP_MemorySuite1, 64);
ASSERT_ALIGN(AEGP_MemorySuite1, 8);
ASSERT_FIELD(AEGP_MemorySuite1, AEGP_NewMemHandle, 0, 8);
ASSERT_FIELD(AEGP_MemorySuite1, AEGP_FreeMemHandle, 8, 8);
ASSERT_FIELD(AEGP_MemorySuite1, AEGP_LockMemHandle, 16, 8);
ASSERT_FIELD(AEGP_MemorySuite1, AEGP_UnlockMemHandle, 24, 8);
ASSERT_FIELD(AEGP_MemorySuite1, AEGP_GetMemHandleSize, 32, 8);
ASSERT_FIELD(AEGP_MemorySuite1, AEGP_ResizeMemHandle, 40, 8);
ASSERT_FIELD(AEGP_MemorySuite1, AEGP_SetMemReportingOn, 48, 8);
ASSERT_FIELD(AEGP_MemorySuite1, AEGP_GetMemStats, 56, 8);
