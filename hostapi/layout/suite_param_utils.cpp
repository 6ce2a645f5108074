// hostapi/layout/suite_param_utils.cpp — sizes and offsets of hostapi/suites/param_utils.h, held at
// compile time.
#include "hostapi/layout/assert_layout.h"
#include "hostapi/suites/param_utils.h"

ASSERT_SIZE(PF_ParamUtilsSuite3, 72);
ASSERT_ALIGN(PF_ParamUtilsSuite3, 8);
ASSERT_FIELD(PF_ParamUtilsSuite3, PF_UpdateParamUI, 0, 8);
ASSERT_FIELD(PF_ParamUtilsSuite3, PF_GetCurrentState, 8, 8);
ASSERT_FIELD(PF_ParamUtilsSuite3, PF_AreStatesIdentical, 16, 8);
ASSERT_FIELD(PF_ParamUtilsSuite3, PF_IsIdenticalCheckout, 24, 8);
ASSERT_FIELD(PF_ParamUtilsSuite3, PF_FindKeyframeTime, 32, 8);
ASSERT_FIELD(PF_ParamUtilsSuite3, PF_GetKeyframeCount, 40, 8);
ASSERT_FIELD(PF_ParamUtilsSuite3, PF_CheckoutKeyframe, 48, 8);
ASSERT_FIELD(PF_ParamUtilsSuite3, PF_CheckinKeyframe, 56, 8);
ASSERT_FIELD(PF_ParamUtilsSuite3, PF_KeyIndexToTime, 64, 8);
