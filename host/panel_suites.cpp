// host/panel_suites.cpp — from a panel's context to its drawing and its background renders.
#include "host/command.h"
#include "host/effect_state.h"
#include "host/panel_state.h"
#include "host/suite_tables.h"
#include "hostapi/suites/custom_ui.h"

namespace host {
namespace {

std::int32_t drawingReference(PF_Context** context, DRAWBOT_DrawRef* drawing) {
  HostState* host = currentHost();
  if (host == nullptr || drawing == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  *drawing = nullptr;
  if (const std::int32_t error = host->faults.check(CallKind::drawingReference))
    return refusal(error);
  PanelState* panel = currentPanel();
  if (panel == nullptr || panel->context.handle() != context) {
    host->report("PF_GetDrawingReference: this is not the context of the event under way");
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  if (panel->drawing == 0) {
    host->report("PF_GetDrawingReference: only in DRAW");
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  *drawing = reinterpret_cast<DRAWBOT_DrawRef>(panel->drawing);
  return PF_Err_NONE;
}

std::int32_t asyncManager(PF_InData* in, PF_EventExtra* extra, PF_AsyncManagerP* manager) {
  HostState* host = currentHost();
  if (host == nullptr || in == nullptr || extra == nullptr || manager == nullptr) {
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  *manager = nullptr;
  if (const std::int32_t error = host->faults.check(CallKind::asyncManager)) return refusal(error);
  PanelState* panel = currentPanel();
  if (panel == nullptr || panel->context.handle() != extra->contextH) {
    host->report("PF_GetContextAsyncManager: this is not the event under way");
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  if (!panel->instance.effect.supports(PF_OutFlag2_CUSTOM_UI_ASYNC_MANAGER)) {
    host->report("PF_GetContextAsyncManager: the effect did not say that it uses one");
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  *manager = reinterpret_cast<PF_AsyncManagerP>(panel->frames.manager());
  return PF_Err_NONE;
}

}  // namespace

const void* customUiSuite1() {
  static const PF_EffectCustomUISuite1 table{drawingReference};
  return &table;
}

const void* customUiSuite2() {
  static const PF_EffectCustomUISuite2 table{drawingReference, asyncManager};
  return &table;
}

}  // namespace host
