// host/instance_state.cpp — edits, and keeping the two copies in step.
#include "host/instance_state.h"

#include <utility>

#include "host/error.h"
#include "host/saved_values.h"

namespace host {

InstanceState::InstanceState(EffectState& itsEffect, FrameSource& layer)
    : effect(itsEffect), ui(effect, layer, ParameterStore(effect, layer.info()), false) {
  ui.setUp();
  begin();
}

InstanceState::InstanceState(EffectState& itsEffect, FrameSource& layer, SavedInstance saved)
    : effect(itsEffect), ui(effect, layer, ParameterStore(effect, layer.info()), false) {
  loadAll(ui, saved.parameters);
  if (saved.sequenceData.empty()) {
    ui.setUp();
  } else {
    ui.resetUp(std::move(saved.sequenceData));
  }
  begin();
}

void InstanceState::begin() {
  if (effect.supports(PF_OutFlag2_SUPPORTS_QUERY_DYNAMIC_FLAGS)) ui.dynamicFlags(now());
  updateUi();
}

std::int32_t InstanceState::checkedTime(std::int32_t frame) const {
  if (frame < 0 || frame >= ui.layer.info().frameCount) {
    throw Error("The layer has no frame " + std::to_string(frame) + ".");
  }
  return ui.frameTime(frame);
}

void InstanceState::edit(std::int32_t index, std::int32_t time,
                         const std::function<void()>& change) {
  change();
  dropRenderCopies();
  if ((declaration(index).definition.flags & PF_ParamFlag_SUPERVISE) != 0) {
    tellChange(index, time);
  } else {
    updateUi();
  }
}

void InstanceState::press(std::int32_t index) {
  if (declaration(index).definition.param_type != PF_Param_BUTTON) {
    throw Error("\"" + declaration(index).name + "\" is no button.");
  }
  tellChange(index, now());
}

void InstanceState::tellChange(std::int32_t index, std::int32_t time) {
  Command command(effect, &ui, PF_Cmd_USER_CHANGED_PARAM);
  command.setTime(time);
  command.giveParams();
  PF_UserChangedParamExtra extra{index};
  const std::int32_t result = command.send(&extra);
  takeChanges(command);
  dropRenderCopies();
  // What went wrong in the effect comes before anything that goes wrong in the clearing up.
  try {
    updateUi();
  } catch (...) {
    command.require(result, "take a change of its parameters");
    throw;
  }
  command.rethrowFailure();
  if (command.cancelled.load()) throw Cancelled();
  command.require(result, "take a change of its parameters");
}

std::vector<std::int32_t> InstanceState::takeChanges(Command& command) {
  std::vector<std::int32_t> changed;
  for (std::size_t i = 1; i < command.params.size(); ++i) {
    const PF_ParamDef& record = command.params[i];
    if ((record.uu.change_flags & PF_ChangeFlag_CHANGED_VALUE) == 0) continue;
    if (valueKind(record.param_type) == ValueKind::none) continue;
    if (record.param_type == PF_Param_ARBITRARY_DATA && record.u.arb_d.value == nullptr) {
      effect.state.report("an arbitrary value is marked changed, and is not there");
      continue;
    }
    const auto index = static_cast<std::int32_t>(i);
    ui.params.set(index, command.in.current_time, ui.params.read(index, record));
    changed.push_back(index);
  }
  return changed;
}

void InstanceState::updateUi() {
  if (!effect.wantsUpdates()) return;
  Command command(effect, &ui, PF_Cmd_UPDATE_PARAMS_UI);
  command.setTime(now());
  command.giveParams();
  command.require(command.send(), "update its controls");
}

void InstanceState::goTo(std::int32_t frame) {
  checkedTime(frame);
  frame_ = frame;
  updateUi();
}

void InstanceState::load(const SavedParameter& parameter) {
  loadOne(ui, parameter);
  dropRenderCopies();
}

SavedInstance InstanceState::save() {
  return {ui.flatten(), saveAll(ui)};
}

void InstanceState::dropRenderCopies() noexcept {
  smartRender_.reset();
  classicRender_.reset();
}

// Only copies for smart renders are marked as such: hosts that send plain RENDER commands have no
// copies of that kind, and effects count on the full data there.
std::unique_ptr<SequenceCopy> InstanceState::newRenderCopy(RenderPath path) {
  const bool renderOnly = path == RenderPath::smart;
  auto copy = std::make_unique<SequenceCopy>(effect, ui.layer, ui.params, renderOnly);
  copy->resetUp(ui.flatten());
  return copy;
}

SequenceCopy& InstanceState::renderSide(RenderPath path) {
  if (effect.state.role == Role::premiere) return ui;
  auto& copy = path == RenderPath::smart ? smartRender_ : classicRender_;
  if (!copy) copy = newRenderCopy(path);
  return *copy;
}

bool InstanceState::watermarked() {
  if (!effect.supports(PF_OutFlag2_SUPPORTS_QUERY_DYNAMIC_FLAGS)) {
    return effect.supports(PF_OutFlag2_OUTPUT_IS_WATERMARKED);
  }
  return (renderSide().dynamicFlags(now()) & PF_OutFlag2_OUTPUT_IS_WATERMARKED) != 0;
}

}  // namespace host
