// hostapi/layout/suite_aegp_layer_render_options.cpp — sizes and offsets of
// hostapi/suites/aegp_layer_render_options.h, held at compile time.
#include "hostapi/layout/assert_layout.h"
#include "hostapi/suites/aegp_layer_render_options.h"

ASSERT_SIZE(AEGP_LayerRenderOptionsSuite2, 120);
ASSERT_ALIGN(AEGP_LayerRenderOptionsSuite2, 8);
ASSERT_FIELD(AEGP_LayerRenderOptionsSuite2, AEGP_NewFromLayer, 0, 8);
ASSERT_FIELD(AEGP_LayerRenderOptionsSuite2, AEGP_NewFromUpstreamOfEffect, 8, 8);
ASSERT_FIELD(AEGP_LayerRenderOptionsSuite2, AEGP_NewFromDownstreamOfEffect, 16, 8);
ASSERT_FIELD(AEGP_LayerRenderOptionsSuite2, AEGP_Duplicate, 24, 8);
ASSERT_FIELD(AEGP_LayerRenderOptionsSuite2, AEGP_Dispose, 32, 8);
ASSERT_FIELD(AEGP_LayerRenderOptionsSuite2, AEGP_SetTime, 40, 8);
ASSERT_FIELD(AEGP_LayerRenderOptionsSuite2, AEGP_GetTime, 48, 8);
ASSERT_FIELD(AEGP_LayerRenderOptionsSuite2, AEGP_SetTimeStep, 56, 8);
ASSERT_FIELD(AEGP_LayerRenderOptionsSuite2, AEGP_GetTimeStep, 64, 8);
ASSERT_FIELD(AEGP_LayerRenderOptionsSuite2, AEGP_SetWorldType, 72, 8);
ASSERT_FIELD(AEGP_LayerRenderOptionsSuite2, AEGP_GetWorldType, 80, 8);
ASSERT_FIELD(AEGP_LayerRenderOptionsSuite2, AEGP_SetDownsampleFactor, 88, 8);
ASSERT_FIELD(AEGP_LayerRenderOptionsSuite2, AEGP_GetDownsampleFactor, 96, 8);
ASSERT_FIELD(AEGP_LayerRenderOptionsSuite2, AEGP_SetMatteMode, 104, 8);
ASSERT_FIELD(AEGP_LayerRenderOptionsSuite2, AEGP_GetMatteMode, 112, 8);
