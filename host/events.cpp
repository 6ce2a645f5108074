// host/events.cpp — events of a panel on their way to the effect and back.
#include "host/events.h"

#include <string>

#include "host/panel_state.h"
#include "host/unused_slot.h"
#include "hostapi/parameters.h"

namespace host {
namespace {

constexpr std::int32_t kTitleHeight = 18;  // of the line above the control

// Without a place in time or space; their params array may be missing.
bool isAboutContext(std::int32_t type) noexcept {
  return type == PF_Event_NEW_CONTEXT || type == PF_Event_CLOSE_CONTEXT;
}

bool hasPlace(std::int32_t type) noexcept {
  return type == PF_Event_DO_CLICK || type == PF_Event_DRAG || type == PF_Event_DRAW ||
         type == PF_Event_ADJUST_CURSOR;
}

// After these the effect's changes of values count.
bool mayChangeValues(std::int32_t type) noexcept {
  return type == PF_Event_DO_CLICK || type == PF_Event_DRAG || type == PF_Event_KEYDOWN;
}

PF_EventCallbacks coordinateCallbacks() {
  PF_EventCallbacks table{};
  HOST_UNUSED(table, layer_to_comp);
  HOST_UNUSED(table, comp_to_layer);
  HOST_UNUSED(table, get_comp2layer_xform);
  HOST_UNUSED(table, get_layer2comp_xform);
  HOST_UNUSED(table, source_to_frame);
  HOST_UNUSED(table, frame_to_source);
  HOST_UNUSED(table, info_draw_color);
  HOST_UNUSED(table, info_draw_text);
  return table;
}

std::string nameOfEvent(std::int32_t type) {
  constexpr const char* kNames[] = {"NEW_CONTEXT", "ACTIVATE",      "DO_CLICK",      "DRAG",
                                    "DRAW",        "DEACTIVATE",    "CLOSE_CONTEXT", "IDLE",
                                    "KEYDOWN",     "ADJUST_CURSOR", "KEYDOWN"};
  return kNames[type];
}

void reportLeftovers(PanelState& panel, const std::string& event, std::int64_t objectsBefore) {
  HostState& host = panel.instance.effect.state;
  const std::int64_t objects = host.accounts.drawingObjects.load() - objectsBefore;
  if (objects > 0) {
    host.report(event + " did not release " + std::to_string(objects) + " drawing objects");
  }
  if (const std::int64_t left = panel.frames.outstanding(); left > 0) {
    host.report(event + " did not give back " + std::to_string(left) + " render references");
  }
}

std::vector<std::int32_t> takeValues(PanelState& panel, Command& command, std::int32_t type,
                                     bool handled) {
  if (mayChangeValues(type) && handled) return panel.instance.takeChanges(command);
  for (const PF_ParamDef& record : command.params) {
    if ((record.uu.change_flags & PF_ChangeFlag_CHANGED_VALUE) == 0) continue;
    panel.instance.effect.state.report(
        nameOfEvent(type) + (mayChangeValues(type)
                                 ? " changed a value and is not marked as handled; ignored"
                                 : " may not change values; ignored"));
    break;
  }
  return {};
}

}  // namespace

EventContext::EventContext() noexcept {
  record_.magic = PF_CONTEXT_MAGIC;
  record_.w_type = PF_Window_EFFECT;
}

PF_EventExtra makeEvent(PanelState& panel, std::int32_t type, PanelArea area) noexcept {
  static const PF_EventCallbacks kCallbacks = coordinateCallbacks();
  PF_EventExtra extra{};
  extra.contextH = panel.context.handle();
  extra.e_type = type;
  if (isAboutContext(type)) return extra;
  extra.cbs = kCallbacks;
  const PanelOptions& options = panel.options;
  PF_EffectWindowInfo& window = extra.effect_win;
  window.index = panel.parameter;
  window.area = !hasPlace(type)            ? PF_EA_NONE
                : area == PanelArea::title ? PF_EA_PARAM_TITLE
                                           : PF_EA_CONTROL;
  window.current_frame = {options.left, options.top, options.left + options.width,
                          options.top + options.height};
  window.param_title_frame = {options.left, options.top - kTitleHeight,
                              options.left + options.width, options.top};
  if (type == PF_Event_DRAW) {
    extra.u.draw.update_rect =
        area == PanelArea::title ? window.param_title_frame : window.current_frame;
    extra.u.draw.depth = 32;
  }
  return extra;
}

EventOutcome sendEvent(PanelState& panel, PF_EventExtra& extra) {
  InstanceState& instance = panel.instance;
  EffectState& effect = instance.effect;
  const std::int32_t type = extra.e_type;
  const std::int64_t objectsBefore = effect.state.accounts.drawingObjects.load();
  PF_Context** const handle = panel.context.handle();
  PF_Context* const record = *handle;

  Command command(effect, &instance.ui, PF_Cmd_EVENT);
  command.setTime(panel.time());
  command.panel = &panel;
  if (!isAboutContext(type) || !effect.state.options.stress.withoutParams) command.giveParams();
  const std::int32_t result = command.send(&extra);

  if (*handle != record || record->magic != static_cast<std::uint32_t>(PF_CONTEXT_MAGIC) ||
      record->w_type != PF_Window_EFFECT) {
    effect.state.report(nameOfEvent(type) + " changed the host's part of the context");
    *handle = record;
    record->magic = PF_CONTEXT_MAGIC;
    record->w_type = PF_Window_EFFECT;
  }
  reportLeftovers(panel, nameOfEvent(type), objectsBefore);

  EventOutcome outcome;
  outcome.handled = (extra.evt_out_flags & PF_EO_HANDLED_EVENT) != 0;
  outcome.wantsDrags = type == PF_Event_DO_CLICK && extra.u.do_click.send_drag != 0;
  outcome.changed = takeValues(panel, command, type, outcome.handled);
  // A mouse event may have written into the instance's data, too.
  if (mayChangeValues(type) && outcome.handled) instance.dropRenderCopies();
  if (!outcome.changed.empty()) instance.updateUi();
  command.rethrowFailure();
  command.require(result, type == PF_Event_DRAW ? "draw its panel" : "answer its panel's events");
  return outcome;
}

}  // namespace host
