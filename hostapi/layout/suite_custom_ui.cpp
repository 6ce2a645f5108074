// hostapi/layout/suite_custom_ui.cpp — sizes and offsets of hostapi/suites/custom_ui.h, held at
// compile time.
#include "hostapi/layout/assert_layout.h"
#include "hostapi/suites/custom_ui.h"

ASSERT_SIZE(PF_EffectCustomUISuite1, 8);
ASSERT_ALIGN(PF_EffectCustomUISuite1, 8);
ASSERT_FIELD(PF_EffectCustomUISuite1, PF_GetDrawingReference, 0, 8);

ASSERT_SIZE(PF_EffectCustomUISuite2, 16);
ASSERT_ALIGN(PF_EffectCustomUISuite2, 8);
ASSERT_FIELD(PF_EffectCustomUISuite2, PF_GetDrawingReference, 0, 8);
ASSERT_FIELD(PF_EffectCustomUISuite2, PF_GetContextAsyncManager, 8, 8);
