// host/suites_aegp_render.cpp — suites with which effects render layers; nobody needs them yet.
#include "host/suite_tables.h"
#include "host/unused_slot.h"
#include "hostapi/suites/aegp_effect.h"
#include "hostapi/suites/aegp_interface.h"
#include "hostapi/suites/aegp_layer_render_options.h"
#include "hostapi/suites/aegp_render.h"
#include "hostapi/suites/aegp_world.h"

// Without a panel there is no asynchronous frame to ask for: every slot says so.
namespace host {

const void* aegpInterfaceSuite() {
  static const AEGP_PFInterfaceSuite1 table = [] {
    AEGP_PFInterfaceSuite1 t{};
    HOST_UNUSED(t, AEGP_GetEffectLayer);
    HOST_UNUSED(t, AEGP_GetNewEffectForEffect);
    HOST_UNUSED(t, AEGP_ConvertEffectToCompTime);
    HOST_UNUSED(t, AEGP_GetEffectCamera);
    HOST_UNUSED(t, AEGP_GetEffectCameraMatrix);
    return t;
  }();
  return &table;
}

const void* aegpEffectSuite() {
  static const AEGP_EffectSuite4 table = [] {
    AEGP_EffectSuite4 t{};
    HOST_UNUSED(t, AEGP_GetLayerNumEffects);
    HOST_UNUSED(t, AEGP_GetLayerEffectByIndex);
    HOST_UNUSED(t, AEGP_GetInstalledKeyFromLayerEffect);
    HOST_UNUSED(t, AEGP_GetEffectParamUnionByIndex);
    HOST_UNUSED(t, AEGP_GetEffectFlags);
    HOST_UNUSED(t, AEGP_SetEffectFlags);
    HOST_UNUSED(t, AEGP_ReorderEffect);
    HOST_UNUSED(t, AEGP_EffectCallGeneric);
    HOST_UNUSED(t, AEGP_DisposeEffect);
    HOST_UNUSED(t, AEGP_ApplyEffect);
    HOST_UNUSED(t, AEGP_DeleteLayerEffect);
    HOST_UNUSED(t, AEGP_GetNumInstalledEffects);
    HOST_UNUSED(t, AEGP_GetNextInstalledEffect);
    HOST_UNUSED(t, AEGP_GetEffectName);
    HOST_UNUSED(t, AEGP_GetEffectMatchName);
    HOST_UNUSED(t, AEGP_GetEffectCategory);
    HOST_UNUSED(t, AEGP_DuplicateEffect);
    HOST_UNUSED(t, AEGP_NumEffectMask);
    HOST_UNUSED(t, AEGP_GetEffectMaskID);
    HOST_UNUSED(t, AEGP_AddEffectMask);
    HOST_UNUSED(t, AEGP_RemoveEffectMask);
    HOST_UNUSED(t, AEGP_SetEffectMask);
    return t;
  }();
  return &table;
}

const void* layerRenderOptionsSuite() {
  static const AEGP_LayerRenderOptionsSuite2 table = [] {
    AEGP_LayerRenderOptionsSuite2 t{};
    HOST_UNUSED(t, AEGP_NewFromLayer);
    HOST_UNUSED(t, AEGP_NewFromUpstreamOfEffect);
    HOST_UNUSED(t, AEGP_NewFromDownstreamOfEffect);
    HOST_UNUSED(t, AEGP_Duplicate);
    HOST_UNUSED(t, AEGP_Dispose);
    HOST_UNUSED(t, AEGP_SetTime);
    HOST_UNUSED(t, AEGP_GetTime);
    HOST_UNUSED(t, AEGP_SetTimeStep);
    HOST_UNUSED(t, AEGP_GetTimeStep);
    HOST_UNUSED(t, AEGP_SetWorldType);
    HOST_UNUSED(t, AEGP_GetWorldType);
    HOST_UNUSED(t, AEGP_SetDownsampleFactor);
    HOST_UNUSED(t, AEGP_GetDownsampleFactor);
    HOST_UNUSED(t, AEGP_SetMatteMode);
    HOST_UNUSED(t, AEGP_GetMatteMode);
    return t;
  }();
  return &table;
}

const void* renderAsyncManagerSuite() {
  static const AEGP_RenderAsyncManagerSuite1 table = [] {
    AEGP_RenderAsyncManagerSuite1 t{};
    HOST_UNUSED(t, AEGP_CheckoutOrRender_ItemFrame_AsyncManager);
    HOST_UNUSED(t, AEGP_CheckoutOrRender_LayerFrame_AsyncManager);
    return t;
  }();
  return &table;
}

const void* renderSuite() {
  static const AEGP_RenderSuite5 table = [] {
    AEGP_RenderSuite5 t{};
    HOST_UNUSED(t, AEGP_RenderAndCheckoutFrame);
    HOST_UNUSED(t, AEGP_RenderAndCheckoutLayerFrame);
    HOST_UNUSED(t, AEGP_RenderAndCheckoutLayerFrame_Async);
    HOST_UNUSED(t, AEGP_CancelAsyncRequest);
    HOST_UNUSED(t, AEGP_CheckinFrame);
    HOST_UNUSED(t, AEGP_GetReceiptWorld);
    HOST_UNUSED(t, AEGP_GetRenderedRegion);
    HOST_UNUSED(t, AEGP_IsRenderedFrameSufficient);
    HOST_UNUSED(t, AEGP_RenderNewItemSoundData);
    HOST_UNUSED(t, AEGP_GetCurrentTimestamp);
    HOST_UNUSED(t, AEGP_HasItemChangedSinceTimestamp);
    HOST_UNUSED(t, AEGP_IsItemWorthwhileToRender);
    HOST_UNUSED(t, AEGP_CheckinRenderedFrame);
    HOST_UNUSED(t, AEGP_GetReceiptGuid);
    return t;
  }();
  return &table;
}

const void* aegpWorldSuite() {
  static const AEGP_WorldSuite3 table = [] {
    AEGP_WorldSuite3 t{};
    HOST_UNUSED(t, AEGP_New);
    HOST_UNUSED(t, AEGP_Dispose);
    HOST_UNUSED(t, AEGP_GetType);
    HOST_UNUSED(t, AEGP_GetSize);
    HOST_UNUSED(t, AEGP_GetRowBytes);
    HOST_UNUSED(t, AEGP_GetBaseAddr8);
    HOST_UNUSED(t, AEGP_GetBaseAddr16);
    HOST_UNUSED(t, AEGP_GetBaseAddr32);
    HOST_UNUSED(t, AEGP_FillOutPFEffectWorld);
    HOST_UNUSED(t, AEGP_FastBlur);
    HOST_UNUSED(t, AEGP_NewPlatformWorld);
    HOST_UNUSED(t, AEGP_DisposePlatformWorld);
    HOST_UNUSED(t, AEGP_NewReferenceFromPlatformWorld);
    return t;
  }();
  return &table;
}

}  // namespace host
