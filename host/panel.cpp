// host/panel.cpp — the effect's own panel among the effect controls.
#include "host/panel.h"

#include <utility>

#include "host/error.h"
#include "host/panel_state.h"
#include "hostapi/parameters.h"

namespace host {
namespace {

constexpr std::int32_t kMostDraws = 1000;  // of one drawUntilReady()

std::int32_t panelParameter(const EffectState& effect) {
  const bool draws = (effect.outFlags & static_cast<std::uint32_t>(PF_OutFlag_CUSTOM_UI)) != 0;
  if (draws && (effect.eventMask & PF_CustomEFlag_EFFECT) != 0) {
    for (std::size_t i = 1; i < effect.declarations.size(); ++i) {
      if ((effect.declarations[i].definition.ui_flags & PF_PUI_CONTROL) != 0) {
        return static_cast<std::int32_t>(i);
      }
    }
  }
  throw Error("The effect has no panel of its own.");
}

PF_DoClickEventInfo clickAt(const Mouse& mouse) noexcept {
  PF_DoClickEventInfo info{};
  info.screen_point = {mouse.x, mouse.y};
  info.num_clicks = mouse.clicks;
  info.modifiers = mouse.modifiers;
  return info;
}

void open(PanelState& panel) {
  for (const std::int32_t type : {PF_Event_NEW_CONTEXT, PF_Event_ACTIVATE}) {
    PF_EventExtra extra = makeEvent(panel, type);
    sendEvent(panel, extra);
    panel.open = true;
  }
}

// Both go out, whatever the first one brings; the first failure is thrown.
void shut(PanelState& panel) {
  if (!std::exchange(panel.open, false)) return;
  panel.mouse.reset();
  std::exception_ptr failure;
  for (const std::int32_t type : {PF_Event_DEACTIVATE, PF_Event_CLOSE_CONTEXT}) {
    try {
      PF_EventExtra extra = makeEvent(panel, type);
      sendEvent(panel, extra);
    } catch (...) {
      if (!failure) failure = std::current_exception();
    }
  }
  if (failure) std::rethrow_exception(failure);
}

void requireOpen(const PanelState& panel) {
  if (!panel.open) throw Error("The panel is closed.");
}

// The names of a drawing's parts are good for one DRAW.
class DrawingScope {
 public:
  explicit DrawingScope(PanelState& panel) noexcept : panel_(panel) {
    panel_.record = {};
    panel_.drawing = newDrawingName();
    panel_.supplier = newDrawingName();
    panel_.surface = newDrawingName();
  }
  ~DrawingScope() { panel_.drawing = panel_.supplier = panel_.surface = 0; }
  DrawingScope(const DrawingScope&) = delete;
  DrawingScope& operator=(const DrawingScope&) = delete;

 private:
  PanelState& panel_;
};

void drawOnce(PanelState& panel, PanelArea area, bool dontDraw) {
  requireOpen(panel);
  panel.frames.advance();
  PF_EventExtra extra = makeEvent(panel, PF_Event_DRAW, area);
  if (dontDraw) extra.evt_in_flags = PF_EI_DONT_DRAW;
  {
    const DrawingScope scope(panel);
    sendEvent(panel, extra);
  }
  if (dontDraw && !panel.record.primitives.empty()) {
    panel.instance.effect.state.report("DRAW drew, and was told not to");
  }
  panel.shown = std::move(panel.record);
}

EventOutcome sendDrag(PanelState& panel, const Mouse& mouse, bool last) {
  PF_EventExtra extra = makeEvent(panel, PF_Event_DRAG);
  extra.u.do_click = *panel.mouse;
  extra.u.do_click.screen_point = {mouse.x, mouse.y};
  extra.u.do_click.modifiers = mouse.modifiers;
  extra.u.do_click.last_time = last ? 1 : 0;
  if (last) panel.mouse.reset();
  EventOutcome outcome = sendEvent(panel, extra);
  if (!last) panel.mouse = extra.u.do_click;
  if (outcome.handled) drawOnce(panel, PanelArea::control, false);
  return outcome;
}

}  // namespace

PanelState::PanelState(InstanceState& itsInstance, PanelOptions itsOptions)
    : instance(itsInstance),
      options(itsOptions),
      parameter(panelParameter(itsInstance.effect)),
      frames(itsInstance.effect.state, itsOptions.async) {
  const PF_ParamDef& asked = instance.declaration(parameter).definition;
  if (options.width <= 0) options.width = asked.ui_width;
  if (options.height <= 0) options.height = asked.ui_height;
}

std::int32_t PanelState::time() const noexcept {
  return cursor ? instance.ui.frameTime(*cursor) : instance.now();
}

PanelState* currentPanel() noexcept {
  const Command* command = currentCommand();
  return command != nullptr ? command->panel : nullptr;
}

Panel::Panel(Instance& instance, PanelOptions options)
    : state_(std::make_unique<PanelState>(instance.state(), options)) {
  try {
    open(*state_);
  } catch (...) {
    const std::exception_ptr failure = std::current_exception();
    try {
      shut(*state_);
    } catch (const std::exception& e) {
      instance.state().effect.state.report(std::string("closing the panel: ") + e.what());
    }
    std::rethrow_exception(failure);
  }
}

Panel::~Panel() {
  if (!state_) return;
  try {
    shut(*state_);
  } catch (const std::exception& e) {
    state_->instance.effect.state.report(std::string("closing the panel: ") + e.what());
  } catch (...) {
    state_->instance.effect.state.report("the panel could not be closed");
  }
}

Panel::Panel(Panel&&) noexcept = default;

const DrawingRecord& Panel::draw(PanelArea area, bool dontDraw) {
  drawOnce(*state_, area, dontDraw);
  return state_->shown;
}

const DrawingRecord& Panel::drawUntilReady() {
  draw();
  for (std::int32_t i = 1; i < kMostDraws && state_->frames.pending(); ++i) draw();
  return state_->shown;
}

const DrawingRecord& Panel::shown() const noexcept {
  return state_->shown;
}
bool Panel::waiting() const noexcept {
  return state_->frames.unready();
}

EventOutcome Panel::click(const Mouse& mouse, bool released) {
  requireOpen(*state_);
  PF_EventExtra extra = makeEvent(*state_, PF_Event_DO_CLICK);
  extra.u.do_click = clickAt(mouse);
  extra.u.do_click.last_time = released ? 1 : 0;
  state_->mouse.reset();
  EventOutcome outcome = sendEvent(*state_, extra);
  outcome.wantsDrags = outcome.wantsDrags && !released;
  if (outcome.wantsDrags) state_->mouse = extra.u.do_click;
  if (outcome.handled) drawOnce(*state_, PanelArea::control, false);
  return outcome;
}

EventOutcome Panel::drag(const Mouse& mouse) {
  requireOpen(*state_);
  if (!dragging()) throw Error("No drag is going on: the effect asked for none at the last click.");
  return sendDrag(*state_, mouse, false);
}

EventOutcome Panel::release(const Mouse& mouse) {
  requireOpen(*state_);
  if (!dragging()) return {};
  return sendDrag(*state_, mouse, true);
}

bool Panel::dragging() const noexcept {
  return state_->mouse.has_value();
}

EventOutcome Panel::adjustCursor(const Mouse& mouse) {
  requireOpen(*state_);
  PF_EventExtra extra = makeEvent(*state_, PF_Event_ADJUST_CURSOR);
  extra.u.adjust_cursor.screen_point = {mouse.x, mouse.y};
  extra.u.adjust_cursor.modifiers = mouse.modifiers;
  return sendEvent(*state_, extra);
}

EventOutcome Panel::key(std::uint32_t code, std::int32_t modifiers) {
  requireOpen(*state_);
  PF_EventExtra extra = makeEvent(*state_, PF_Event_KEYDOWN);
  extra.u.key_down.keycode = code;
  extra.u.key_down.modifiers = modifiers;
  const EventOutcome outcome = sendEvent(*state_, extra);
  if (outcome.handled) drawOnce(*state_, PanelArea::control, false);
  return outcome;
}

void Panel::idle() {
  requireOpen(*state_);
  PF_EventExtra extra = makeEvent(*state_, PF_Event_IDLE);
  sendEvent(*state_, extra);
}

void Panel::moveTo(std::int32_t left, std::int32_t top) {
  state_->options.left = left;
  state_->options.top = top;
}

void Panel::placeCursor(std::int32_t frame) {
  state_->cursor = frame;
}
void Panel::followInstance() {
  state_->cursor.reset();
}

PanelRect Panel::control() const noexcept {
  const PanelOptions& options = state_->options;
  return {options.left, options.top, options.left + options.width, options.top + options.height};
}

const PanelOptions& Panel::options() const noexcept {
  return state_->options;
}
std::int32_t Panel::parameter() const noexcept {
  return state_->parameter;
}

void Panel::close() {
  shut(*state_);
}

}  // namespace host
