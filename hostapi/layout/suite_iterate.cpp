// hostapi/layout/suite_iterate.cpp — sizes and offsets of hostapi/suites/iterate.h, held at compile
// time.
#include "hostapi/layout/assert_layout.h"
#include "hostapi/suites/iterate.h"

ASSERT_SIZE(PF_Iterate8Suite1, 40);
ASSERT_ALIGN(PF_Iterate8Suite1, 8);
ASSERT_FIELD(PF_Iterate8Suite1, iterate, 0, 8);
ASSERT_FIELD(PF_Iterate8Suite1, iterate_origin, 8, 8);
ASSERT_FIELD(PF_Iterate8Suite1, iterate_lut, 16, 8);
ASSERT_FIELD(PF_Iterate8Suite1, iterate_origin_non_clip_src, 24, 8);
ASSERT_FIELD(PF_Iterate8Suite1, iterate_generic, 32, 8);

ASSERT_SIZE(PF_Iterate16Suite1, 24);
ASSERT_ALIGN(PF_Iterate16Suite1, 8);
ASSERT_FIELD(PF_Iterate16Suite1, iterate, 0, 8);
ASSERT_FIELD(PF_Iterate16Suite1, iterate_origin, 8, 8);
ASSERT_FIELD(PF_Iterate16Suite1, iterate_origin_non_clip_src, 16, 8);

ASSERT_SIZE(PF_IterateFloatSuite1, 24);
ASSERT_ALIGN(PF_IterateFloatSuite1, 8);
ASSERT_FIELD(PF_IterateFloatSuite1, iterate, 0, 8);
ASSERT_FIELD(PF_IterateFloatSuite1, iterate_origin, 8, 8);
ASSERT_FIELD(PF_IterateFloatSuite1, iterate_origin_non_clip_src, 16, 8);
