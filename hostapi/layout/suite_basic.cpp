// hostapi/layout/suite_basic.cpp — sizes and offsets of hostapi/suites/basic.h, held at compile
// time.
#include "hostapi/layout/assert_layout.h"
#include "hostapi/suites/basic.h"

ASSERT_SIZE(SPBasicSuite, 56);
ASSERT_ALIGN(SPBasicSuite, 8);
ASSERT_FIELD(SPBasicSuite, AcquireSuite, 0, 8);
ASSERT_FIELD(SPBasicSuite, ReleaseSuite, 8, 8);
ASSERT_FIELD(SPBasicSuite, IsEqual, 16, 8);
ASSERT_FIELD(SPBasicSuite, AllocateBlock, 24, 8);
ASSERT_FIELD(SPBasicSuite, FreeBlock, 32, 8);
ASSERT_FIELD(SPBasicSuite, ReallocateBlock, 40, 8);
ASSERT_FIELD(SPBasicSuite, Undefined, 48, 8);
