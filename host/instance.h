// host/instance.h — the effect applied to a layer: parameters, analysis, rendering, saving.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/effect.h"
#include "host/frame_source.h"
#include "host/image.h"

namespace host {

// A point in layer pixels.
struct Point {
  double x = 0.0;
  double y = 0.0;
};

struct SavedKeyframe {
  std::int32_t frame = 0;
  double value = 0.0;             // numbers; x of points
  double y = 0.0;                 // points
  std::vector<std::byte> opaque;  // arbitrary data, flattened by the effect
  double z = 0.0;                 // 3D points; blue of colours, red and green being value and y
  double w = 0.0;                 // alpha of colours
};

// A parameter as a project keeps it: a constant (one entry, constant true) or keyframes.
struct SavedParameter {
  std::int32_t id = 0;
  std::string name;
  std::int32_t type = 0;  // PF_Param_*
  bool constant = true;
  std::vector<SavedKeyframe> keys;
};

// What a project keeps of an instance.
struct SavedInstance {
  std::vector<std::byte> sequenceData;  // flat
  std::vector<SavedParameter> parameters;
};

// Which commands render a frame. Smart: 8, 16 bit and float. Classic: 8 bit (and 16 bit in the
// After Effects role).
enum class RenderPath { smart, classic };

class InstanceState;
class Instance;

// One parameter of an instance. Numbers: sliders in their own units, checkboxes 0 or 1, popups
// 1-based. Values are clamped to the declared range. set and setAt are edits as a user makes them:
// the effect is told (USER_CHANGED_PARAM when supervised, then UPDATE_PARAMS_UI) and its own
// changes are taken over. On a parameter that has keyframes, set makes one at the current frame.
// Throws Error for a parameter of another kind or a bad frame. Valid as long as the instance is,
// wherever that has been moved to.
class Parameter {
 public:
  std::int32_t index() const noexcept { return index_; }

  void set(double value);
  void set(Point point);
  void setText(std::string_view text);  // arbitrary data: through the effect's SCAN

  // Keyframes at the start of a frame. Between keyframes numbers go linearly, checkboxes and popups
  // hold, arbitrary data goes through the effect's INTERP.
  void setAt(std::int32_t frame, double value);
  void setAt(std::int32_t frame, Point point);
  void setTextAt(std::int32_t frame, std::string_view text);
  void removeKeyframes();

  double value(std::int32_t frame = 0) const;
  Point point(std::int32_t frame = 0) const;
  std::string text(std::int32_t frame = 0) const;  // arbitrary data: through the effect's PRINT
  std::size_t keyframeCount() const;

  // As the effect has it in the controls at present: labels follow its state.
  std::string label() const;
  bool enabled() const;

 private:
  friend class Instance;
  Parameter(InstanceState& instance, std::int32_t index) : instance_(&instance), index_(index) {}
  InstanceState* instance_;
  std::int32_t index_;
};

// A copy of the instance made for rendering, from its flattened data and parameter values. Several
// copies render different frames on different threads; one copy serves one thread at a time.
class RenderCopy {
 public:
  ~RenderCopy();
  RenderCopy(RenderCopy&&) noexcept;
  RenderCopy& operator=(RenderCopy&&) noexcept;

  // Renders a frame at full size into output, which gets the layer's size and this depth unless it
  // has them already, on the path that the copy was made for. Throws CommandError, Cancelled, or
  // what the frame source threw.
  void render(std::int32_t frame, Depth depth, Image& output);

  // The key under which a host would cache the frame: parameters, time, depth and the bytes that
  // the effect mixed in at the last render. Equal keys mean equal frames.
  std::string lastCacheKey() const;

 private:
  friend class Instance;
  class State;
  explicit RenderCopy(std::unique_ptr<State> state);
  std::unique_ptr<State> state_;
};

// The effect on a layer. SEQUENCE_SETUP at construction (RESETUP for open), SEQUENCE_SETDOWN at the
// end. One thread at a time, except for the render copies. Throws CommandError.
class Instance {
 public:
  Instance(Effect& effect, FrameSource& layer);
  // Opens saved data. Parameters are matched by id; missing ones get their defaults.
  static Instance open(Effect& effect, FrameSource& layer, SavedInstance saved);
  ~Instance();
  Instance(Instance&&) noexcept;

  Parameter param(std::string_view name);
  Parameter param(std::int32_t index);

  // Sets a parameter without telling the effect, as a project being loaded does.
  // (See Parameter for edits.)
  void load(const SavedParameter& parameter);

  // Presses a button by its name or text: USER_CHANGED_PARAM, then what the host does after it.
  // Progress and messages go to the host's listener. Throws Cancelled when the listener said stop.
  void press(std::string_view button);

  // Moves the time cursor; parameter edits and the panel happen at this frame.
  void goTo(std::int32_t frame);

  // Renders through the instance's own render copy, kept in step with it.
  void render(std::int32_t frame, Depth depth, Image& output, RenderPath path = RenderPath::smart);

  // A further copy for another thread. Reflects the instance as it is now.
  RenderCopy renderCopy(RenderPath path = RenderPath::smart);

  // Flattened data (the live instance goes on) and parameter values.
  SavedInstance save();

  // What the effect last told the host of the current frame's output: OUTPUT_IS_WATERMARKED.
  bool watermarked();

  InstanceState& state() noexcept { return *state_; }

 private:
  explicit Instance(std::unique_ptr<InstanceState> state);
  std::unique_ptr<InstanceState> state_;
};

}  // namespace host
