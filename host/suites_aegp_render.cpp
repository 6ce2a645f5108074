// host/suites_aegp_render.cpp — suites with which panels have their layer rendered.
#include "host/aegp_result.h"
#include "host/command.h"
#include "host/effect_state.h"
#include "host/panel_state.h"
#include "host/sequence_copy.h"
#include "host/suite_tables.h"
#include "host/unused_slot.h"
#include "hostapi/suites/aegp_effect.h"
#include "hostapi/suites/aegp_interface.h"
#include "hostapi/suites/aegp_layer_render_options.h"
#include "hostapi/suites/aegp_render.h"
#include "hostapi/suites/aegp_world.h"

namespace host {
namespace {

template <class Ref>
PanelFrames::Name nameOf(Ref ref) noexcept {
  return reinterpret_cast<PanelFrames::Name>(ref);
}

std::int32_t wrong(const char* what) noexcept {
  if (HostState* host = currentHost()) host->report(what);
  return kAegpErrorParameter;
}

std::int32_t planned(CallKind kind) noexcept {
  HostState* host = currentHost();
  return host != nullptr ? host->faults.check(kind) : 0;
}

// What may be short of memory, or read the layer.
template <class Action>
std::int32_t attempt(Action action) noexcept {
  try {
    return action();
  } catch (...) {
    Command* command = currentCommand();
    return command != nullptr ? command->keepFailure() : kAegpErrorMemory;
  }
}

std::int32_t newEffectForEffect(std::int32_t plugin, PF_ProgPtr ref, AEGP_EffectRefH* effect) {
  if (effect == nullptr) return kAegpErrorParameter;
  *effect = nullptr;
  if (const std::int32_t error = planned(CallKind::newEffectRef)) return refusal(error);
  PanelState* panel = currentPanel();
  if (panel == nullptr || panel->drawing == 0) {
    wrong("AEGP_GetNewEffectForEffect: not in this command");
    return kAegpErrorWrongThread;
  }
  if (plugin < 1 || plugin > panel->instance.effect.state.pluginIds.load() ||
      panel->instance.ui.ref != ref) {
    return wrong("AEGP_GetNewEffectForEffect: unknown plug-in id or effect reference");
  }
  return attempt([&] {
    *effect = reinterpret_cast<AEGP_EffectRefH>(panel->frames.newEffect());
    return 0;
  });
}

std::int32_t disposeEffect(AEGP_EffectRefH effect) {
  PanelState* panel = currentPanel();
  if (panel == nullptr || !panel->frames.disposeEffect(nameOf(effect))) {
    return wrong("AEGP_DisposeEffect: this is no effect reference");
  }
  return 0;
}

std::int32_t newFromUpstream(std::int32_t, AEGP_EffectRefH effect,
                             AEGP_LayerRenderOptionsH* options) {
  if (options == nullptr) return kAegpErrorParameter;
  *options = nullptr;
  if (const std::int32_t error = planned(CallKind::renderOptions)) return refusal(error);
  PanelState* panel = currentPanel();
  if (panel == nullptr || !panel->frames.hasEffect(nameOf(effect))) {
    return wrong("AEGP_NewFromUpstreamOfEffect: this is no effect reference");
  }
  return attempt([&] {
    const Moment now{panel->time(), panel->instance.ui.layer.info().timeScale};
    *options = reinterpret_cast<AEGP_LayerRenderOptionsH>(panel->frames.newOptions(now));
    return 0;
  });
}

std::int32_t disposeOptions(AEGP_LayerRenderOptionsH options) {
  PanelState* panel = currentPanel();
  if (panel == nullptr || !panel->frames.disposeOptions(nameOf(options))) {
    return wrong("AEGP_Dispose: these are no render options");
  }
  return 0;
}

std::int32_t checkoutOrRender(PF_AsyncManagerP manager, std::uint32_t purpose,
                              AEGP_LayerRenderOptionsH options, AEGP_FrameReceiptH* receipt) {
  if (receipt == nullptr) return kAegpErrorParameter;
  *receipt = nullptr;
  if (const std::int32_t error = planned(CallKind::asyncFrame)) return refusal(error);
  PanelState* panel = currentPanel();
  const Moment* moment = panel != nullptr ? panel->frames.options(nameOf(options)) : nullptr;
  if (moment == nullptr || panel->frames.manager() != nameOf(manager)) {
    return wrong("AEGP_CheckoutOrRender_LayerFrame_AsyncManager: no manager, or no options");
  }
  return attempt([&] {
    *receipt = reinterpret_cast<AEGP_FrameReceiptH>(
        panel->frames.request(*currentCommand(), purpose, *moment));
    return 0;
  });
}

std::int32_t receiptWorld(AEGP_FrameReceiptH receipt, AEGP_WorldH* world) {
  if (world == nullptr) return kAegpErrorParameter;
  *world = nullptr;
  if (const std::int32_t error = planned(CallKind::receiptWorld)) return refusal(error);
  const PanelState* panel = currentPanel();
  if (panel == nullptr || !panel->frames.hasReceipt(nameOf(receipt))) {
    return wrong("AEGP_GetReceiptWorld: this is no receipt");
  }
  *world = reinterpret_cast<AEGP_WorldH>(panel->frames.worldOf(nameOf(receipt)));
  return 0;
}

std::int32_t checkinFrame(AEGP_FrameReceiptH receipt) {
  PanelState* panel = currentPanel();
  if (panel == nullptr || !panel->frames.checkIn(*currentCommand(), nameOf(receipt))) {
    return wrong("AEGP_CheckinFrame: this is no receipt, or it is in already");
  }
  return 0;
}

std::int32_t fillOutWorld(AEGP_WorldH world, PF_EffectWorld* record) {
  if (record == nullptr) return kAegpErrorParameter;
  if (const std::int32_t error = planned(CallKind::fillWorld)) {
    *record = {};
    return refusal(error);
  }
  const PanelState* panel = currentPanel();
  const PF_EffectWorld* filled = panel != nullptr ? panel->frames.world(nameOf(world)) : nullptr;
  if (filled == nullptr) return wrong("AEGP_FillOutPFEffectWorld: this is no world of a receipt");
  *record = *filled;
  return 0;
}

}  // namespace

const void* aegpInterfaceSuite() {
  static const AEGP_PFInterfaceSuite1 table = [] {
    AEGP_PFInterfaceSuite1 t{};
    HOST_UNUSED(t, AEGP_GetEffectLayer);
    t.AEGP_GetNewEffectForEffect = newEffectForEffect;
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
    t.AEGP_DisposeEffect = disposeEffect;
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
    t.AEGP_NewFromUpstreamOfEffect = newFromUpstream;
    HOST_UNUSED(t, AEGP_NewFromDownstreamOfEffect);
    HOST_UNUSED(t, AEGP_Duplicate);
    t.AEGP_Dispose = disposeOptions;
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
    t.AEGP_CheckoutOrRender_LayerFrame_AsyncManager = checkoutOrRender;
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
    t.AEGP_CheckinFrame = checkinFrame;
    t.AEGP_GetReceiptWorld = receiptWorld;
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
    t.AEGP_FillOutPFEffectWorld = fillOutWorld;
    HOST_UNUSED(t, AEGP_FastBlur);
    HOST_UNUSED(t, AEGP_NewPlatformWorld);
    HOST_UNUSED(t, AEGP_DisposePlatformWorld);
    HOST_UNUSED(t, AEGP_NewReferenceFromPlatformWorld);
    return t;
  }();
  return &table;
}

}  // namespace host
