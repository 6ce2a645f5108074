// host/parameter_store.cpp — an instance's parameter values: constants and keyframes.
#include "host/parameter_store.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/effect_state.h"
#include "host/error.h"

namespace host {
namespace {

constexpr double kFixedOne = 65536.0;

// Rounded to 16.16, kept within the record's 32 bits.
std::int32_t toFixed(double value) noexcept {
  const double scaled = std::floor(value * kFixedOne + 0.5);
  return static_cast<std::int32_t>(
      std::clamp(scaled, static_cast<double>(std::numeric_limits<std::int32_t>::min()),
                 static_cast<double>(std::numeric_limits<std::int32_t>::max())));
}

double fromFixed(std::int32_t value) noexcept {
  return value / kFixedOne;
}

std::int32_t toWhole(double value) noexcept {
  return static_cast<std::int32_t>(std::lround(value));
}

// Whether time (in units of 1 / scale) comes before the moment: exact for all 32-bit values.
bool before(std::int32_t time, std::uint32_t scale, Moment moment) noexcept {
  return static_cast<std::int64_t>(time) * moment.scale <
         static_cast<std::int64_t>(moment.value) * scale;
}

std::uint8_t toChannel(double value) noexcept {
  return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 255.0)));
}

Value fromPixel(const PF_Pixel& pixel) {
  return {static_cast<double>(pixel.red),
          static_cast<double>(pixel.green),
          {},
          static_cast<double>(pixel.blue),
          static_cast<double>(pixel.alpha)};
}

bool holds(const PF_ParamDef& definition) noexcept {
  return definition.param_type == PF_Param_CHECKBOX || definition.param_type == PF_Param_POPUP ||
         (definition.flags & PF_ParamFlag_CANNOT_INTERP) != 0;
}

}  // namespace

ValueKind valueKind(std::int32_t parameterType) noexcept {
  switch (parameterType) {
    case PF_Param_SLIDER:
    case PF_Param_FIX_SLIDER:
    case PF_Param_ANGLE:
    case PF_Param_CHECKBOX:
    case PF_Param_POPUP:
    case PF_Param_FLOAT_SLIDER:
      return ValueKind::number;
    case PF_Param_POINT:
      return ValueKind::point;
    case PF_Param_POINT_3D:
      return ValueKind::point3d;
    case PF_Param_COLOR:
      return ValueKind::colour;
    case PF_Param_ARBITRARY_DATA:
      return ValueKind::arbitrary;
    default:
      return ValueKind::none;
  }
}

ParameterStore::ParameterStore(EffectState& effect, const LayerInfo& layer)
    : effect_(&effect), layer_(layer) {
  const auto count = static_cast<std::int32_t>(effect.declarations.size());
  for (std::int32_t i = 0; i < count; ++i) {
    slots_.push_back({std::make_shared<Track>(Track{true, {{0, initial(i, false)}}}), false});
  }
}

ParameterStore::ParameterStore(const ParameterStore& other)
    : effect_(other.effect_), layer_(other.layer_) {
  for (Slot& slot : other.slots_) slot.shared = true;
  slots_ = other.slots_;
}

const ParameterDeclaration& ParameterStore::declaration(std::int32_t index) const {
  if (index < 0 || index >= static_cast<std::int32_t>(effect_->declarations.size())) {
    throw Error("The effect has no parameter number " + std::to_string(index) + ".");
  }
  return effect_->declarations[static_cast<std::size_t>(index)];
}

ArbitraryKind ParameterStore::kindOf(std::int32_t index) const {
  const PF_ArbitraryDef& arbitrary = declaration(index).definition.u.arb_d;
  return {effect_, arbitrary.id, arbitrary.refconPV};
}

Value ParameterStore::initial(std::int32_t index, bool forOldProject) const {
  const PF_ParamDef& definition = declaration(index).definition;
  const PF_ParamDefUnion& u = definition.u;
  if (forOldProject && (definition.flags & PF_ParamFlag_USE_VALUE_FOR_OLD_PROJECTS) != 0) {
    return read(index, definition);
  }
  switch (definition.param_type) {
    case PF_Param_SLIDER:
      return {static_cast<double>(u.sd.dephault), 0.0, {}};
    case PF_Param_FIX_SLIDER:
      return {fromFixed(u.fd.dephault), 0.0, {}};
    case PF_Param_ANGLE:
      return {fromFixed(u.ad.dephault), 0.0, {}};
    case PF_Param_CHECKBOX:
      return {u.bd.dephault != 0 ? 1.0 : 0.0, 0.0, {}};
    case PF_Param_POPUP:
      return {static_cast<double>(u.pd.dephault), 0.0, {}};
    case PF_Param_FLOAT_SLIDER:
      return {static_cast<double>(u.fs_d.dephault), 0.0, {}};
    case PF_Param_POINT:
      return {fromFixed(u.td.x_dephault) / 100.0 * layer_.width,
              fromFixed(u.td.y_dephault) / 100.0 * layer_.height,
              {}};
    case PF_Param_POINT_3D:  // a percentage, as for flat points; depth goes by the layer's height
      return {u.point3d_d.x_dephault / 100.0 * layer_.width,
              u.point3d_d.y_dephault / 100.0 * layer_.height,
              {},
              u.point3d_d.z_dephault / 100.0 * layer_.height};
    case PF_Param_COLOR:
      return fromPixel(u.cd.dephault);
    case PF_Param_ARBITRARY_DATA:
      return {0.0, 0.0, copyArbitrary(kindOf(index), u.arb_d.dephault)};
    default:
      return {};
  }
}

ParameterStore::Slot& ParameterStore::slot(std::int32_t index) const {
  declaration(index);
  return slots_[static_cast<std::size_t>(index)];
}

Track& ParameterStore::own(std::int32_t index) {
  Slot& mine = slot(index);
  if (mine.shared) mine = {std::make_shared<Track>(*mine.track), false};
  return *mine.track;
}

void ParameterStore::setTrack(std::int32_t index, Track track) {
  if (track.keys.empty()) return;
  std::stable_sort(track.keys.begin(), track.keys.end(),
                   [](const Keyframe& a, const Keyframe& b) { return a.time < b.time; });
  slot(index) = {std::make_shared<Track>(std::move(track)), false};
}

void ParameterStore::set(std::int32_t index, std::int32_t time, Value value) {
  if (!track(index).constant) return setKeyframe(index, time, std::move(value));
  own(index).keys = {{0, clamped(index, std::move(value))}};
}

void ParameterStore::setKeyframe(std::int32_t index, std::int32_t time, Value value) {
  if ((declaration(index).definition.flags & PF_ParamFlag_CANNOT_TIME_VARY) != 0) {
    throw Error("The parameter \"" + declaration(index).name + "\" cannot have keyframes.");
  }
  Track& mine = own(index);
  value = clamped(index, std::move(value));
  if (mine.constant) {
    mine = {false, {{time, std::move(value)}}};
    return;
  }
  const auto at =
      std::lower_bound(mine.keys.begin(), mine.keys.end(), time,
                       [](const Keyframe& key, std::int32_t t) { return key.time < t; });
  if (at != mine.keys.end() && at->time == time) {
    at->value = std::move(value);
  } else {
    mine.keys.insert(at, {time, std::move(value)});
  }
}

void ParameterStore::removeKeyframes(std::int32_t index, std::int32_t time) {
  if (track(index).constant) return;
  Value last = at(index, {time, layer_.timeScale});
  own(index) = {true, {{0, std::move(last)}}};
}

Value ParameterStore::at(std::int32_t index, Moment moment) const {
  const Track& values = track(index);
  const PF_ParamDef& definition = declaration(index).definition;
  const bool opaque = definition.param_type == PF_Param_ARBITRARY_DATA;
  const auto fresh = [&](const Value& value) {
    if (!opaque) return value;
    return Value{0.0, 0.0, copyArbitrary(kindOf(index), value.opaque->handle())};
  };

  // The first key that is not before the moment.
  const auto right = std::lower_bound(
      values.keys.begin(), values.keys.end(), moment,
      [&](const Keyframe& key, Moment m) { return before(key.time, layer_.timeScale, m); });
  if (right == values.keys.begin()) return fresh(right->value);
  const auto left = std::prev(right);
  if (right == values.keys.end()) return fresh(left->value);
  const double time =
      static_cast<double>(moment.value) * layer_.timeScale / static_cast<double>(moment.scale);
  const double t = (time - left->time) / (static_cast<double>(right->time) - left->time);
  if (t >= 1.0) return fresh(right->value);
  if (holds(definition)) return fresh(left->value);
  if (opaque) {
    return {0.0, 0.0,
            interpolateArbitrary(kindOf(index), left->value.opaque->handle(),
                                 right->value.opaque->handle(), t)};
  }
  const Value& a = left->value;
  const Value& b = right->value;
  const auto between = [t](double from, double to) { return from + (to - from) * t; };
  return {between(a.x, b.x), between(a.y, b.y), {}, between(a.z, b.z), between(a.w, b.w)};
}

void ParameterStore::write(PF_ParamDef& record, const Value& value) noexcept {
  PF_ParamDefUnion& u = record.u;
  switch (record.param_type) {
    case PF_Param_SLIDER:
      u.sd.value = toWhole(value.x);
      break;
    case PF_Param_FIX_SLIDER:
      u.fd.value = toFixed(value.x);
      break;
    case PF_Param_ANGLE:
      u.ad.value = toFixed(value.x);
      break;
    case PF_Param_CHECKBOX:
      u.bd.value = toWhole(value.x);
      break;
    case PF_Param_POPUP:
      u.pd.value = toWhole(value.x);
      break;
    case PF_Param_FLOAT_SLIDER:
      u.fs_d.value = value.x;
      break;
    case PF_Param_POINT:
      u.td.x_value = toFixed(value.x);
      u.td.y_value = toFixed(value.y);
      break;
    case PF_Param_POINT_3D:
      u.point3d_d.x_value = value.x;
      u.point3d_d.y_value = value.y;
      u.point3d_d.z_value = value.z;
      break;
    case PF_Param_COLOR:
      u.cd.value = {toChannel(value.w), toChannel(value.x), toChannel(value.y), toChannel(value.z)};
      break;
    case PF_Param_ARBITRARY_DATA:
      u.arb_d.value = value.opaque ? value.opaque->handle() : nullptr;
      break;
    default:
      break;
  }
}

Value ParameterStore::read(std::int32_t index, const PF_ParamDef& record) const {
  const PF_ParamDefUnion& u = record.u;
  Value value;
  switch (declaration(index).definition.param_type) {
    case PF_Param_SLIDER:
      value.x = u.sd.value;
      break;
    case PF_Param_FIX_SLIDER:
      value.x = fromFixed(u.fd.value);
      break;
    case PF_Param_ANGLE:
      value.x = fromFixed(u.ad.value);
      break;
    case PF_Param_CHECKBOX:
      value.x = u.bd.value;
      break;
    case PF_Param_POPUP:
      value.x = u.pd.value;
      break;
    case PF_Param_FLOAT_SLIDER:
      value.x = u.fs_d.value;
      break;
    case PF_Param_POINT:
      value = {fromFixed(u.td.x_value), fromFixed(u.td.y_value), {}};
      break;
    case PF_Param_POINT_3D:
      value = {u.point3d_d.x_value, u.point3d_d.y_value, {}, u.point3d_d.z_value};
      break;
    case PF_Param_COLOR:
      value = fromPixel(u.cd.value);
      break;
    case PF_Param_ARBITRARY_DATA:
      value.opaque = copyArbitrary(kindOf(index), u.arb_d.value);
      break;
    default:
      break;
  }
  return clamped(index, std::move(value));
}

Value ParameterStore::clamped(std::int32_t index, Value value) const noexcept {
  const PF_ParamDef& definition = effect_->declarations[static_cast<std::size_t>(index)].definition;
  const PF_ParamDefUnion& u = definition.u;
  const auto within = [](double v, double low, double high) {
    if (std::isnan(v)) return low;
    return high < low ? v : std::clamp(v, low, high);
  };
  switch (definition.param_type) {
    case PF_Param_SLIDER:
      value.x = std::round(within(value.x, u.sd.valid_min, u.sd.valid_max));
      break;
    case PF_Param_FIX_SLIDER:
      value.x = within(value.x, fromFixed(u.fd.valid_min), fromFixed(u.fd.valid_max));
      break;
    case PF_Param_CHECKBOX:
      value.x = value.x != 0.0 ? 1.0 : 0.0;
      break;
    case PF_Param_POPUP:
      value.x = std::round(within(value.x, 1.0, u.pd.num_choices));
      break;
    case PF_Param_FLOAT_SLIDER:
      value.x = within(value.x, static_cast<double>(u.fs_d.valid_min),
                       static_cast<double>(u.fs_d.valid_max));
      break;
    case PF_Param_COLOR:
      for (double* channel : {&value.x, &value.y, &value.z, &value.w}) {
        *channel = within(*channel, 0.0, 255.0);
      }
      break;
    default:
      break;
  }
  return value;
}

}  // namespace host
