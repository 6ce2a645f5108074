// hostapi/layout/suite_aegp_effect.cpp — sizes and offsets of hostapi/suites/aegp_effect.h, held at
// compile time.
#include "hostapi/layout/assert_layout.h"
#include "hostapi/suites/aegp_effect.h"

ASSERT_SIZE(AEGP_EffectSuite4, 176);
ASSERT_ALIGN(AEGP_EffectSuite4, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_GetLayerNumEffects, 0, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_GetLayerEffectByIndex, 8, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_GetInstalledKeyFromLayerEffect, 16, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_GetEffectParamUnionByIndex, 24, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_GetEffectFlags, 32, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_SetEffectFlags, 40, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_ReorderEffect, 48, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_EffectCallGeneric, 56, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_DisposeEffect, 64, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_ApplyEffect, 72, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_DeleteLayerEffect, 80, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_GetNumInstalledEffects, 88, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_GetNextInstalledEffect, 96, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_GetEffectName, 104, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_GetEffectMatchName, 112, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_GetEffectCategory, 120, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_DuplicateEffect, 128, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_NumEffectMask, 136, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_GetEffectMaskID, 144, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_AddEffectMask, 152, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_RemoveEffectMask, 160, 8);
ASSERT_FIELD(AEGP_EffectSuite4, AEGP_SetEffectMask, 168, 8);
