// hostapi/suites/aegp_render.h — rendered frames and the manager that renders them in the
// background.
#pragma once

#include <cstdint>

#include "hostapi/scalars.h"

struct A_LRect;
struct A_Time;

using AEGP_RenderSuiteCheckForCancel = std::int32_t (*)(void*, std::uint8_t*);
using AEGP_AsyncFrameReadyCallback = std::int32_t (*)(std::uint64_t, std::uint8_t, std::int32_t,
                                                      AEGP_FrameReceiptH,
                                                      AEGP_AsyncFrameRequestRefcon);

struct AEGP_TimeStamp {
  char a[4];
};

struct AEGP_SoundDataFormat {
  double sample_rateF;
  std::int32_t encoding;
  std::int32_t bytes_per_sampleL;
  std::int32_t num_channelsL;
};

struct AEGP_RenderAsyncManagerSuite1 {
  // manager; purpose id, constant chosen by the caller; item render options; out receipt
  std::int32_t (*AEGP_CheckoutOrRender_ItemFrame_AsyncManager)(PF_AsyncManagerP, std::uint32_t,
                                                               AEGP_RenderOptionsH,
                                                               AEGP_FrameReceiptH*);
  // manager; purpose id, constant chosen by the caller; layer render options; out receipt (its
  // world can be null)
  std::int32_t (*AEGP_CheckoutOrRender_LayerFrame_AsyncManager)(PF_AsyncManagerP, std::uint32_t,
                                                                AEGP_LayerRenderOptionsH,
                                                                AEGP_FrameReceiptH*);
};

struct AEGP_RenderSuite5 {
  std::int32_t (*AEGP_RenderAndCheckoutFrame)(AEGP_RenderOptionsH, AEGP_RenderSuiteCheckForCancel,
                                              AEGP_CancelRefcon, AEGP_FrameReceiptH*);
  // layer options; cancel test function or null; its refcon; out receipt
  std::int32_t (*AEGP_RenderAndCheckoutLayerFrame)(AEGP_LayerRenderOptionsH,
                                                   AEGP_RenderSuiteCheckForCancel,
                                                   AEGP_CancelRefcon, AEGP_FrameReceiptH*);
  std::int32_t (*AEGP_RenderAndCheckoutLayerFrame_Async)(AEGP_LayerRenderOptionsH,
                                                         AEGP_AsyncFrameReadyCallback,
                                                         AEGP_AsyncFrameRequestRefcon,
                                                         std::uint64_t*);
  std::int32_t (*AEGP_CancelAsyncRequest)(std::uint64_t);
  // receipt
  std::int32_t (*AEGP_CheckinFrame)(AEGP_FrameReceiptH);
  // receipt; out world (host keeps it, caller only reads; can be null)
  std::int32_t (*AEGP_GetReceiptWorld)(AEGP_FrameReceiptH, AEGP_WorldH*);
  std::int32_t (*AEGP_GetRenderedRegion)(AEGP_FrameReceiptH, A_LRect*);
  std::int32_t (*AEGP_IsRenderedFrameSufficient)(AEGP_RenderOptionsH, AEGP_RenderOptionsH,
                                                 std::uint8_t*);
  std::int32_t (*AEGP_RenderNewItemSoundData)(AEGP_ItemH, const A_Time*, const A_Time*,
                                              const AEGP_SoundDataFormat*,
                                              AEGP_RenderSuiteCheckForCancel, AEGP_CancelRefcon,
                                              AEGP_SoundDataH*);
  std::int32_t (*AEGP_GetCurrentTimestamp)(AEGP_TimeStamp*);
  std::int32_t (*AEGP_HasItemChangedSinceTimestamp)(AEGP_ItemH, const A_Time*, const A_Time*,
                                                    const AEGP_TimeStamp*, std::uint8_t*);
  std::int32_t (*AEGP_IsItemWorthwhileToRender)(AEGP_RenderOptionsH, const AEGP_TimeStamp*,
                                                std::uint8_t*);
  std::int32_t (*AEGP_CheckinRenderedFrame)(AEGP_RenderOptionsH, const AEGP_TimeStamp*,
                                            std::uint32_t, AEGP_PlatformWorldH);
  std::int32_t (*AEGP_GetReceiptGuid)(AEGP_FrameReceiptH, AEGP_MemHandle*);
};

inline constexpr const char* kAEGPRenderAsyncManagerSuite = "AEGP Render Asyc Manager Suite";
inline constexpr const char* kAEGPRenderSuite = "AEGP Render Suite";

inline constexpr std::int32_t kAEGPRenderAsyncManagerSuiteVersion1 = 1;
inline constexpr std::int32_t kAEGPRenderSuiteVersion5 = 8;
