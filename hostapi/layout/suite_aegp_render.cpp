// hostapi/layout/suite_aegp_render.cpp — sizes and offsets of hostapi/suites/aegp_render.h, held at
// compile time.
#include "hostapi/layout/assert_layout.h"
#include "hostapi/suites/aegp_render.h"

ASSERT_SIZE(AEGP_TimeStamp, 4);
ASSERT_ALIGN(AEGP_TimeStamp, 1);
ASSERT_FIELD(AEGP_TimeStamp, a, 0, 4);

ASSERT_SIZE(AEGP_SoundDataFormat, 24);
ASSERT_ALIGN(AEGP_SoundDataFormat, 8);
ASSERT_FIELD(AEGP_SoundDataFormat, sample_rateF, 0, 8);
ASSERT_FIELD(AEGP_SoundDataFormat, encoding, 8, 4);
ASSERT_FIELD(AEGP_SoundDataFormat, bytes_per_sampleL, 12, 4);
ASSERT_FIELD(AEGP_SoundDataFormat, num_channelsL, 16, 4);

ASSERT_SIZE(AEGP_RenderAsyncManagerSuite1, 16);
ASSERT_ALIGN(AEGP_RenderAsyncManagerSuite1, 8);
ASSERT_FIELD(AEGP_RenderAsyncManagerSuite1, AEGP_CheckoutOrRender_ItemFrame_AsyncManager, 0, 8);
ASSERT_FIELD(AEGP_RenderAsyncManagerSuite1, AEGP_CheckoutOrRender_LayerFrame_AsyncManager, 8, 8);

ASSERT_SIZE(AEGP_RenderSuite5, 112);
ASSERT_ALIGN(AEGP_RenderSuite5, 8);
ASSERT_FIELD(AEGP_RenderSuite5, AEGP_RenderAndCheckoutFrame, 0, 8);
ASSERT_FIELD(AEGP_RenderSuite5, AEGP_RenderAndCheckoutLayerFrame, 8, 8);
ASSERT_FIELD(AEGP_RenderSuite5, AEGP_RenderAndCheckoutLayerFrame_Async, 16, 8);
ASSERT_FIELD(AEGP_RenderSuite5, AEGP_CancelAsyncRequest, 24, 8);
ASSERT_FIELD(AEGP_RenderSuite5, AEGP_CheckinFrame, 32, 8);
ASSERT_FIELD(AEGP_RenderSuite5, AEGP_GetReceiptWorld, 40, 8);
ASSERT_FIELD(AEGP_RenderSuite5, AEGP_GetRenderedRegion, 48, 8);
ASSERT_FIELD(AEGP_RenderSuite5, AEGP_IsRenderedFrameSufficient, 56, 8);
ASSERT_FIELD(AEGP_RenderSuite5, AEGP_RenderNewItemSoundData, 64, 8);
ASSERT_FIELD(AEGP_RenderSuite5, AEGP_GetCurrentTimestamp, 72, 8);
ASSERT_FIELD(AEGP_RenderSuite5, AEGP_HasItemChangedSinceTimestamp, 80, 8);
ASSERT_FIELD(AEGP_RenderSuite5, AEGP_IsItemWorthwhileToRender, 88, 8);
ASSERT_FIELD(AEGP_RenderSuite5, AEGP_CheckinRenderedFrame, 96, 8);
ASSERT_FIELD(AEGP_RenderSuite5, AEGP_GetReceiptGuid, 104, 8);
