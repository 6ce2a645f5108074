// host/saved_values.cpp — parameter values as a project keeps them.
#include "host/saved_values.h"

#include <algorithm>
#include <optional>

#include "host/effect_state.h"
#include "host/error.h"

namespace host {
namespace {

SavedParameter saveOne(SequenceCopy& copy, std::int32_t index) {
  const ParameterDeclaration& declaration = copy.params.declaration(index);
  const Track& track = copy.params.track(index);
  SavedParameter saved;
  saved.id = declaration.id;
  saved.name = declaration.name;
  saved.type = declaration.definition.param_type;
  saved.constant = track.constant;
  const std::int32_t step = std::max(copy.layer.info().timeStep, 1);
  for (const Keyframe& key : track.keys) {
    SavedKeyframe kept;
    kept.frame = key.time / step;
    kept.value = key.value.x;
    kept.y = key.value.y;
    kept.z = key.value.z;
    kept.w = key.value.w;
    if (key.value.opaque) {
      kept.opaque = flattenArbitrary(key.value.opaque->kind(), key.value.opaque->handle());
    }
    saved.keys.push_back(std::move(kept));
  }
  return saved;
}

// The index of the declaration that a saved parameter belongs to, or -1.
std::int32_t indexFor(const SequenceCopy& copy, const SavedParameter& saved) {
  const auto& declarations = copy.effect.declarations;
  for (std::size_t i = 1; i < declarations.size(); ++i) {
    const bool same =
        saved.id != 0 ? declarations[i].id == saved.id : declarations[i].name == saved.name;
    if (same) return static_cast<std::int32_t>(i);
  }
  return -1;
}

}  // namespace

std::vector<SavedParameter> saveAll(SequenceCopy& copy) {
  std::vector<SavedParameter> all;
  for (std::size_t i = 1; i < copy.definitions.size(); ++i) {
    if (valueKind(copy.definitions[i].param_type) == ValueKind::none) continue;
    all.push_back(saveOne(copy, static_cast<std::int32_t>(i)));
  }
  return all;
}

void loadOne(SequenceCopy& copy, const SavedParameter& saved) {
  const std::int32_t index = indexFor(copy, saved);
  if (index < 0) throw Error("The effect has no parameter \"" + saved.name + "\".");
  const PF_ParamDef& definition = copy.params.declaration(index).definition;
  if (definition.param_type != saved.type || valueKind(saved.type) == ValueKind::none) {
    throw Error("The parameter \"" + saved.name + "\" holds values of another type.");
  }
  if (saved.keys.empty()) throw Error("The parameter \"" + saved.name + "\" holds no value.");
  if (!saved.constant && (definition.flags & PF_ParamFlag_CANNOT_TIME_VARY) != 0) {
    throw Error("The parameter \"" + saved.name + "\" cannot have keyframes.");
  }
  Track track;
  track.constant = saved.constant;
  std::optional<std::int32_t> previous;
  for (const SavedKeyframe& kept : saved.keys) {
    Value value{kept.value, kept.y, {}, kept.z, kept.w};
    if (saved.type == PF_Param_ARBITRARY_DATA) {
      value = {0.0, 0.0, unflattenArbitrary(copy.params.kindOf(index), kept.opaque)};
      if (value.opaque->handle() == nullptr) {
        throw Error("The value of \"" + saved.name + "\" is damaged.");
      }
    }
    if (!saved.constant && previous && kept.frame <= *previous) {
      throw Error("The keyframes of \"" + saved.name + "\" are out of order.");
    }
    previous = kept.frame;
    const std::int32_t time = saved.constant ? 0 : copy.frameTime(kept.frame);
    track.keys.push_back({time, copy.params.clamped(index, std::move(value))});
    if (saved.constant) break;
  }
  copy.params.setTrack(index, std::move(track));
}

void loadAll(SequenceCopy& copy, const std::vector<SavedParameter>& saved) {
  std::vector<bool> known(copy.definitions.size());
  for (const SavedParameter& parameter : saved) {
    const std::int32_t index = indexFor(copy, parameter);
    if (index < 0) continue;
    loadOne(copy, parameter);
    known[static_cast<std::size_t>(index)] = true;
  }
  for (std::size_t i = 1; i < known.size(); ++i) {
    const auto index = static_cast<std::int32_t>(i);
    const bool special = (copy.params.declaration(index).definition.flags &
                          PF_ParamFlag_USE_VALUE_FOR_OLD_PROJECTS) != 0;
    if (known[i] || !special) continue;
    copy.params.setTrack(index, {true, {{0, copy.params.initial(index, true)}}});
  }
}

}  // namespace host
