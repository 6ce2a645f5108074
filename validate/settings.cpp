// validate/settings.cpp — values to try out on parameters.
#include "validate/settings.h"

#include <cmath>
#include <cstdio>

#include "host/instance_state.h"

namespace validate {
namespace {

constexpr double kFixed = 65536.0;

struct Range {
  double low = 0.0;
  double high = 0.0;
};

// Of numbers; what an effect left at 0..0 has no limits.
Range rangeOf(const PF_ParamDef& definition) {
  const PF_ParamDefUnion& u = definition.u;
  Range range;
  switch (definition.param_type) {
    case PF_Param_SLIDER:
      range = {static_cast<double>(u.sd.valid_min), static_cast<double>(u.sd.valid_max)};
      break;
    case PF_Param_FIX_SLIDER:
      range = {u.fd.valid_min / kFixed, u.fd.valid_max / kFixed};
      break;
    case PF_Param_FLOAT_SLIDER:
      range = {static_cast<double>(u.fs_d.valid_min), static_cast<double>(u.fs_d.valid_max)};
      break;
    case PF_Param_CHECKBOX:
      return {0.0, 1.0};
    case PF_Param_POPUP:
      return {1.0, static_cast<double>(u.pd.num_choices)};
    case PF_Param_ANGLE:
      return {-720.0, 720.0};
    default:
      break;
  }
  return range;
}

const PF_ParamDef& definitionOf(host::Instance& instance, std::int32_t index) {
  return instance.state().declaration(index).definition;
}

bool isWhole(std::int32_t type) noexcept {
  return type == PF_Param_SLIDER || type == PF_Param_CHECKBOX || type == PF_Param_POPUP;
}

}  // namespace

std::vector<host::Value> extremesOf(host::Instance& instance, std::int32_t index) {
  const PF_ParamDef& definition = definitionOf(instance, index);
  const host::LayerInfo& layer = instance.state().ui.layer.info();
  const double w = layer.width;
  const double h = layer.height;
  switch (host::valueKind(definition.param_type)) {
    case host::ValueKind::number: {
      const Range range = rangeOf(definition);
      return {{range.low, 0.0, {}}, {range.high, 0.0, {}}};
    }
    case host::ValueKind::point:
      return {{0.0, 0.0, {}}, {w, h, {}}, {-3.0 * w, 5.0 * h, {}}};
    case host::ValueKind::point3d:
      return {{0.0, 0.0, {}}, {w, h, {}, h}, {-3.0 * w, 5.0 * h, {}, -1000.0}};
    case host::ValueKind::colour:
      return {{0.0, 0.0, {}, 0.0, 255.0}, {255.0, 255.0, {}, 255.0, 255.0}};
    default:
      return {};
  }
}

host::Value anyValueOf(host::Instance& instance, std::int32_t index, std::mt19937_64& random) {
  const PF_ParamDef& definition = definitionOf(instance, index);
  const host::LayerInfo& layer = instance.state().ui.layer.info();
  // Not std::uniform_real_distribution: a seed is to mean the same with every library.
  const auto between = [&](double low, double high) {
    return low + (high - low) * static_cast<double>(random() >> 11) * 0x1p-53;
  };
  switch (host::valueKind(definition.param_type)) {
    case host::ValueKind::number: {
      const Range range = rangeOf(definition);
      const double value = between(range.low, range.high);
      return {isWhole(definition.param_type) ? std::round(value) : value, 0.0, {}};
    }
    case host::ValueKind::point:
    case host::ValueKind::point3d:
      return {between(-0.5 * layer.width, 1.5 * layer.width),
              between(-0.5 * layer.height, 1.5 * layer.height),
              {},
              between(-100.0, 100.0)};
    case host::ValueKind::colour:
      return {between(0, 255), between(0, 255), {}, between(0, 255), 255.0};
    default:
      return {};
  }
}

void setValue(host::Instance& instance, std::int32_t index, const host::Value& value) {
  host::InstanceState& state = instance.state();
  const std::int32_t time = state.now();
  state.edit(index, time, [&] { state.ui.params.set(index, time, value); });
}

void setKeyframe(host::Instance& instance, std::int32_t index, std::int32_t frame,
                 const host::Value& value) {
  host::InstanceState& state = instance.state();
  const std::int32_t time = state.checkedTime(frame);
  state.edit(index, time, [&] { state.ui.params.setKeyframe(index, time, value); });
}

bool mayHaveKeyframes(host::Instance& instance, std::int32_t index) {
  return (definitionOf(instance, index).flags & PF_ParamFlag_CANNOT_TIME_VARY) == 0;
}

std::string labelOf(host::Instance& instance, std::int32_t index) {
  return "\"" + instance.state().declaration(index).name + "\" (" + std::to_string(index) + ")";
}

std::string textOf(const host::Value& value, host::ValueKind kind) {
  char text[128];
  if (kind == host::ValueKind::number) {
    std::snprintf(text, sizeof text, "%g", value.x);
  } else if (kind == host::ValueKind::point) {
    std::snprintf(text, sizeof text, "(%g, %g)", value.x, value.y);
  } else {
    std::snprintf(text, sizeof text, "(%g, %g, %g)", value.x, value.y, value.z);
  }
  return text;
}

}  // namespace validate
