// hostapi/scalars.h — opaque addresses and handles that both sides pass around.
#pragma once

#include <cstdint>

using PF_ProgPtr = struct PF_ProgPtr_Opaque*;
using PF_ContextRefcon = struct PF_ContextRefcon_Opaque*;
using PF_LayerAudio = struct PF_LayerAudio_Opaque*;
using PF_CallbackFunc = struct PF_CallbackFunc_Opaque*;
using PF_AsyncManagerP = struct PF_AsyncManagerP_Opaque*;
using PF_AppProgressDialogP = struct PF_AppProgressDialogP_Opaque*;
using AEGP_EffectRefH = struct AEGP_EffectRefH_Opaque**;
using AEGP_FrameReceiptH = struct AEGP_FrameReceiptH_Opaque**;
using AEGP_ItemH = struct AEGP_ItemH_Opaque**;
using AEGP_LayerH = struct AEGP_LayerH_Opaque**;
using AEGP_LayerRenderOptionsH = struct AEGP_LayerRenderOptionsH_Opaque**;
using AEGP_RenderOptionsH = struct AEGP_RenderOptionsH_Opaque**;
using AEGP_MemHandle = struct AEGP_MemHandle_Opaque**;
using AEGP_PlatformWorldH = struct AEGP_PlatformWorldH_Opaque**;
using AEGP_WorldH = struct AEGP_WorldH_Opaque**;
using AEGP_GlobalRefcon = struct AEGP_GlobalRefcon_Opaque*;
using AEGP_CancelRefcon = struct AEGP_CancelRefcon_Opaque*;
using AEGP_AsyncFrameRequestRefcon = struct AEGP_AsyncFrameRequestRefcon_Opaque*;
using AEGP_StreamRefH = struct AEGP_StreamRefH_Opaque**;
using AEGP_SoundDataH = struct AEGP_SoundDataH_Opaque**;
using DRAWBOT_DrawRef = struct DRAWBOT_DrawRef_Opaque*;
using DRAWBOT_SupplierRef = struct DRAWBOT_SupplierRef_Opaque*;
using DRAWBOT_SurfaceRef = struct DRAWBOT_SurfaceRef_Opaque*;
using DRAWBOT_ObjectRef = struct DRAWBOT_ObjectRef_Opaque*;
using DRAWBOT_BrushRef = struct DRAWBOT_BrushRef_Opaque*;
using DRAWBOT_FontRef = struct DRAWBOT_FontRef_Opaque*;
using DRAWBOT_ImageRef = struct DRAWBOT_ImageRef_Opaque*;
using DRAWBOT_PathRef = struct DRAWBOT_PathRef_Opaque*;
using DRAWBOT_PenRef = struct DRAWBOT_PenRef_Opaque*;
using PF_Handle = void**;
using PF_ArbitraryH = void**;
using A_UTF16Char = std::uint16_t;
using PF_DeletePreRenderDataFunc = void (*)(void*);

// Fixed point: signed 16.16.
using PF_Fixed = std::int32_t;

inline constexpr std::int32_t A_Fixed_ONE = 65536;
inline constexpr std::int32_t A_Fixed_HALF = 32768;
