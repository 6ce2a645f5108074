// host/parameter_store.h — an instance's parameter values: constants and keyframes.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "host/arbitrary_values.h"
#include "host/effect.h"
#include "host/frame_source.h"
#include "hostapi/parameters.h"

namespace host {

// Numbers in x; points in x and y (and z), pixels of the layer; colours as red, green, blue in x,
// y, z and alpha in w, 0..255; arbitrary data in opaque.
struct Value {
  double x = 0.0;
  double y = 0.0;
  ArbitraryPtr opaque;
  double z = 0.0;
  double w = 0.0;
};

// A time of value / scale seconds.
struct Moment {
  std::int32_t value = 0;
  std::uint32_t scale = 1;
};

struct Keyframe {
  std::int32_t time = 0;  // units of the layer's time scale
  Value value;
};

// Never empty; a constant is one entry. Sorted by time.
struct Track {
  bool constant = true;
  std::vector<Keyframe> keys;
};

// None: groups, buttons, layers and paths, whose values are no numbers that a project keeps here.
enum class ValueKind : std::uint8_t { none, number, point, point3d, colour, arbitrary };
ValueKind valueKind(std::int32_t parameterType) noexcept;

// Copying is cheap: copies share tracks until one of them changes. A copy may go to another thread;
// it is made on the thread that uses the original.
class ParameterStore {
 public:
  // Everything at its default; points scaled to the layer.
  ParameterStore(EffectState& effect, const LayerInfo& layer);
  ParameterStore(const ParameterStore& other);
  ParameterStore& operator=(const ParameterStore&) = delete;

  const Track& track(std::int32_t index) const { return *slot(index).track; }
  void setTrack(std::int32_t index, Track track);
  // Replaces a constant; on a keyframed parameter sets the key at this time.
  void set(std::int32_t index, std::int32_t time, Value value);
  void setKeyframe(std::int32_t index, std::int32_t time, Value value);
  // Leaves the value at this time as constant.
  void removeKeyframes(std::int32_t index, std::int32_t time);

  // Numbers and points go linearly between keyframes, or hold where the parameter cannot
  // interpolate. Arbitrary values come fresh from the effect's INTERP or COPY, the caller's own.
  Value at(std::int32_t index, Moment moment) const;

  // The record's value fields; and a value out of them, clamped to the declared range. An arbitrary
  // value is lent to the record: value must outlive its use, and is not read back here.
  static void write(PF_ParamDef& record, const Value& value) noexcept;
  Value read(std::int32_t index, const PF_ParamDef& record) const;
  // A value within the declared range; whole numbers where the parameter takes only those.
  Value clamped(std::int32_t index, Value value) const noexcept;
  Value initial(std::int32_t index, bool forOldProject) const;

  const ParameterDeclaration& declaration(std::int32_t index) const;
  ArbitraryKind kindOf(std::int32_t index) const;

 private:
  struct Slot {
    std::shared_ptr<Track> track;
    bool shared = false;  // some copy may look at it: not to be changed in place
  };
  Slot& slot(std::int32_t index) const;
  Track& own(std::int32_t index);

  EffectState* effect_;
  LayerInfo layer_;
  mutable std::vector<Slot> slots_;
};

}  // namespace host
