// ui/click.cpp — what the mouse does in the panel.
#include "ui/click.h"

#include <algorithm>
#include <cmath>

#include "stats/number_conversion.h"
#include "ui/layout.h"
#include "ui/panel_parameters.h"

namespace varilum {
namespace {

constexpr double kTopHandleLevel = 255.0;
constexpr double kNudge = 0.001;  // makes the host take the keyframe for a new one

constexpr std::int32_t kHandled = PF_EO_HANDLED_EVENT | PF_EO_UPDATE_NOW;

std::int64_t& grabOffset(PF_DoClickEventInfo& click) noexcept {
  return click.continue_refcon[1];
}
std::int64_t& interaction(PF_DoClickEventInfo& click) noexcept {
  return click.continue_refcon[2];
}

bool isInControl(const PF_EventExtra& event) noexcept {
  return event.contextH != nullptr && *event.contextH != nullptr &&
         (*event.contextH)->w_type == PF_Window_EFFECT && event.effect_win.area == PF_EA_CONTROL;
}

std::int64_t plotSpan(const SequenceState& state) noexcept {
  return std::int64_t{state.plotRect.right} - state.plotRect.left;
}

// Returns whether the event was one of a drag of the handle.
bool dragHandle(const PF_InData& in, PF_ParamDef** params, PF_EventExtra& event,
                SequenceState& state) noexcept {
  PF_DoClickEventInfo& drag = event.u.do_click;
  if (!isInControl(event) || interaction(drag) != kClickDragHandle) return false;
  const std::int64_t span = plotSpan(state);
  if (span <= 0) return true;
  // The host keeps the offset, so it may hold anything: the difference is taken in double.
  const double x = static_cast<double>(drag.screen_point.h) - static_cast<double>(grabOffset(drag));
  const double level = (x - state.plotRect.left) / static_cast<double>(span) * kTopHandleLevel;
  const double whole = std::clamp(std::round(level), 0.0, kTopHandleLevel);
  if (setLuminance(in, params, whole)) {
    state.recomputeDesired = 1;
    state.currentDesired = whole;
  }
  return true;
}

void takeInputLevel(const PF_InData& in, PF_ParamDef** params, SequenceState& state) noexcept {
  if (params == nullptr) return;
  const double level = state.currentInput;
  const float spread = state.currentSpread;
  if (setLuminance(in, params, level)) state.currentDesired = level;
  setShiftSpread(params, spread);
  state.copiedSpread = spread;
  state.recomputeDesired = 1;
}

void beginDrag(const PF_InData& in, PF_ParamDef** params, PF_EventExtra& event,
               SequenceState& state, std::int64_t x) noexcept {
  PF_DoClickEventInfo& click = event.u.do_click;
  const std::int64_t level = truncateToInt(std::round(state.currentDesired));
  grabOffset(click) = (x - state.plotRect.left) -
                      plotSpan(state) * level / static_cast<std::int64_t>(kTopHandleLevel);
  interaction(click) = kClickDragHandle;
  dragHandle(in, params, event, state);
  click.send_drag = 1;
}

}  // namespace

void handleClick(const PF_InData& in, PF_ParamDef** params, PF_EventExtra& event,
                 SequenceState* state) noexcept {
  event.evt_out_flags |= kHandled;
  if (state == nullptr || !isInControl(event)) return;

  PF_DoClickEventInfo& click = event.u.do_click;
  interaction(click) = kClickIdle;
  // The panel may have moved since it was drawn.
  const PF_Rect& area = event.effect_win.current_frame;
  const std::int64_t x = std::int64_t{state->panelRect.left} - area.left + click.screen_point.h;
  const std::int64_t y = std::int64_t{state->panelRect.top} - area.top + click.screen_point.v;

  if (contains(state->inputMarkerRect, x, y)) {
    interaction(click) = kClickInputMarker;
    takeInputLevel(in, params, *state);
  } else if (contains(state->desiredHandleRect, x, y)) {
    beginDrag(in, params, event, *state, x);
  } else if (click.last_time != 0) {
    if (lowerLuminance(in, params, kNudge)) state->recomputeDesired = 1;
  }
}

void handleDrag(const PF_InData& in, PF_ParamDef** params, PF_EventExtra& event,
                SequenceState* state) noexcept {
  // The host takes over what was written only from an event that was handled.
  if (state == nullptr || dragHandle(in, params, event, *state)) event.evt_out_flags |= kHandled;
}

}  // namespace varilum
