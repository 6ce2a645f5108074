// host/parameter.cpp — one parameter of an instance, as users of the host see it.
#include <cstring>

#include "host/error.h"
#include "host/instance.h"
#include "host/instance_state.h"

namespace host {
namespace {

void requireKind(const InstanceState& instance, std::int32_t index, ValueKind wanted) {
  const ParameterDeclaration& declaration = instance.declaration(index);
  if (valueKind(declaration.definition.param_type) == wanted) return;
  throw Error("The parameter \"" + declaration.name + "\" is of another kind.");
}

// The value, or the key at the cursor.
void setNow(InstanceState& instance, std::int32_t index, ValueKind kind, Value value) {
  requireKind(instance, index, kind);
  const std::int32_t time = instance.now();
  instance.edit(index, time, [&] { instance.ui.params.set(index, time, std::move(value)); });
}

void setKey(InstanceState& instance, std::int32_t index, std::int32_t frame, ValueKind kind,
            Value value) {
  requireKind(instance, index, kind);
  const std::int32_t time = instance.checkedTime(frame);
  instance.edit(index, time,
                [&] { instance.ui.params.setKeyframe(index, time, std::move(value)); });
}

Value scan(InstanceState& instance, std::int32_t index, std::string_view text) {
  requireKind(instance, index, ValueKind::arbitrary);
  return {0.0, 0.0, scanArbitrary(instance.ui.params.kindOf(index), text)};
}

Value valueAt(const InstanceState& instance, std::int32_t index, std::int32_t frame,
              ValueKind kind) {
  requireKind(instance, index, kind);
  return instance.ui.params.at(index,
                               {instance.ui.frameTime(frame), instance.ui.layer.info().timeScale});
}

}  // namespace

void Parameter::set(double value) {
  setNow(*instance_, index_, ValueKind::number, {value, 0.0, {}});
}

void Parameter::set(Point point) {
  setNow(*instance_, index_, ValueKind::point, {point.x, point.y, {}});
}

void Parameter::setText(std::string_view text) {
  setNow(*instance_, index_, ValueKind::arbitrary, scan(*instance_, index_, text));
}

void Parameter::setAt(std::int32_t frame, double value) {
  setKey(*instance_, index_, frame, ValueKind::number, {value, 0.0, {}});
}

void Parameter::setAt(std::int32_t frame, Point point) {
  setKey(*instance_, index_, frame, ValueKind::point, {point.x, point.y, {}});
}

void Parameter::setTextAt(std::int32_t frame, std::string_view text) {
  setKey(*instance_, index_, frame, ValueKind::arbitrary, scan(*instance_, index_, text));
}

void Parameter::removeKeyframes() {
  const std::int32_t time = instance_->now();
  instance_->edit(index_, time, [&] { instance_->ui.params.removeKeyframes(index_, time); });
}

double Parameter::value(std::int32_t frame) const {
  return valueAt(*instance_, index_, frame, ValueKind::number).x;
}

Point Parameter::point(std::int32_t frame) const {
  const Value value = valueAt(*instance_, index_, frame, ValueKind::point);
  return {value.x, value.y};
}

std::string Parameter::text(std::int32_t frame) const {
  const Value value = valueAt(*instance_, index_, frame, ValueKind::arbitrary);
  return printArbitrary(value.opaque->kind(), value.opaque->handle());
}

std::size_t Parameter::keyframeCount() const {
  const Track& track = instance_->ui.params.track(index_);
  return track.constant ? 0 : track.keys.size();
}

std::string Parameter::label() const {
  const PF_ParamDef& shown = instance_->ui.definitions[static_cast<std::size_t>(index_)];
  return {shown.name, strnlen(shown.name, sizeof shown.name)};
}

bool Parameter::enabled() const {
  const PF_ParamDef& shown = instance_->ui.definitions[static_cast<std::size_t>(index_)];
  return (shown.ui_flags & PF_PUI_DISABLED) == 0;
}

}  // namespace host
