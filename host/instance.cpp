// host/instance.cpp — the effect applied to a layer.
#include "host/instance.h"

#include <utility>

#include "host/error.h"
#include "host/instance_state.h"
#include "host/render.h"

namespace host {

class RenderCopy::State {
 public:
  State(std::unique_ptr<SequenceCopy> itsCopy, RenderPath itsPath)
      : copy(std::move(itsCopy)), path(itsPath) {}

  std::unique_ptr<SequenceCopy> copy;
  const RenderPath path;
  std::string key;
};

RenderCopy::RenderCopy(std::unique_ptr<State> state) : state_(std::move(state)) {}
RenderCopy::~RenderCopy() = default;
RenderCopy::RenderCopy(RenderCopy&&) noexcept = default;
RenderCopy& RenderCopy::operator=(RenderCopy&&) noexcept = default;

void RenderCopy::render(std::int32_t frame, Depth depth, Image& output) {
  state_->key = renderFrame(*state_->copy, frame, depth, output, state_->path);
}

std::string RenderCopy::lastCacheKey() const {
  return state_->key;
}

Instance::Instance(Effect& effect, FrameSource& layer)
    : state_(std::make_unique<InstanceState>(effect.state(), layer)) {}

Instance::Instance(std::unique_ptr<InstanceState> state) : state_(std::move(state)) {}

Instance Instance::open(Effect& effect, FrameSource& layer, SavedInstance saved) {
  return Instance(std::make_unique<InstanceState>(effect.state(), layer, std::move(saved)));
}

Instance::~Instance() = default;
Instance::Instance(Instance&&) noexcept = default;

Parameter Instance::param(std::string_view name) {
  for (std::size_t i = 1; i < state_->effect.declarations.size(); ++i) {
    if (state_->effect.declarations[i].name == name) {
      return {*state_, static_cast<std::int32_t>(i)};
    }
  }
  throw Error("The effect has no parameter \"" + std::string(name) + "\".");
}

Parameter Instance::param(std::int32_t index) {
  state_->declaration(index);
  return {*state_, index};
}

void Instance::load(const SavedParameter& parameter) {
  state_->load(parameter);
}

void Instance::press(std::string_view button) {
  const auto& declarations = state_->effect.declarations;
  for (std::size_t i = 1; i < declarations.size(); ++i) {
    if (declarations[i].definition.param_type != PF_Param_BUTTON || button.empty()) continue;
    if (declarations[i].buttonText == button || declarations[i].name == button) {
      return state_->press(static_cast<std::int32_t>(i));
    }
  }
  throw Error("The effect has no button \"" + std::string(button) + "\".");
}

void Instance::goTo(std::int32_t frame) {
  state_->goTo(frame);
}

void Instance::render(std::int32_t frame, Depth depth, Image& output, RenderPath path) {
  renderFrame(state_->renderSide(path), frame, depth, output, path);
}

RenderCopy Instance::renderCopy(RenderPath path) {
  return RenderCopy(std::make_unique<RenderCopy::State>(state_->newRenderCopy(path), path));
}

SavedInstance Instance::save() {
  return state_->save();
}

bool Instance::watermarked() {
  return state_->watermarked();
}

}  // namespace host
