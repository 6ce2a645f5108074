// tests/ui/recording_host.h — a host for one panel: it records what is drawn, counts what it hands
// out, and refuses calls on demand.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "hostapi/command_data.h"
#include "hostapi/events.h"
#include "hostapi/parameters.h"
#include "hostapi/suites/basic.h"
#include "hostapi/suites/drawbot.h"
#include "plugin/global_state.h"
#include "plugin/param_index.h"
#include "stats/sequence_arrays.h"
#include "stats/sequence_state.h"
#include "tests/plugin/handle_table.h"

namespace varilum::test {

// One mark on the surface.
struct Primitive {
  enum class Kind { rect, stroke, fill, text };
  Kind kind;
  DRAWBOT_ColorRGBA color{};
  DRAWBOT_RectF32 rect{};                  // rect
  std::vector<DRAWBOT_PointF32> points{};  // stroke, fill: the path's; text: where it begins
  std::string text{};                      // text
  float size = 0.0F;                       // stroke: the pen's width; text: the font's size
  std::int32_t rule = -1;                  // fill

  // As "kind colour geometry": paths of more than four points by their number only.
  std::string describe() const;
};

// Lives alone: the callbacks find it. An After Effects with a layer of `frames` frames of 10 units
// each, the cursor on `frame`, and the panel at (10, 20). Fonts are 10 high.
class RecordingHost {
 public:
  explicit RecordingHost(std::int32_t frames = 5, std::int32_t frame = 2);
  ~RecordingHost();  // also proves that everything came back
  RecordingHost(const RecordingHost&) = delete;
  RecordingHost& operator=(const RecordingHost&) = delete;

  PF_InData in{};
  PF_OutData out{};
  GlobalState global{};
  PF_EventExtra event{};
  PF_Context context{};
  HandleTable memory;
  PF_ParamDef** params() { return pointers_.data(); }
  PF_ParamDef& param(std::int32_t index) { return values_[static_cast<std::size_t>(index)]; }

  // The instance; its handle stays locked while the host lives.
  SequenceState& state() { return *state_; }
  LevelLocks levels() { return {in, *state_}; }
  double luminance() const;  // the Luminance parameter's value
  void setLuminance(double level);

  // Levels 100, 110, ... and 125 desired; the current frame's statistics stored and in hand.
  void analyze();
  // What the store holds of a frame.
  std::pair<FrameStats, FrameHistogram> stored(std::int32_t frame);

  // Sends an event of this kind; its result. DRAW to the control unless `event` says otherwise.
  std::int32_t send(std::int32_t type);
  bool changedTargets = false;  // by the last event

  // The layer's pixels, 8-bit grey of one level, and whether a background render has them already.
  void setPicture(std::int32_t width, std::int32_t height, std::uint8_t level);
  PF_EffectWorld world{};
  std::int32_t worldFormat = PF_PixelFormat_ARGB32;
  enum class Ready { yes, noReceipt, noWorld };
  Ready ready = Ready::yes;
  std::vector<std::pair<std::int32_t, std::int32_t>> checkouts;  // index, time
  std::vector<std::pair<std::int32_t, std::string>> labels;      // redefined: index, name

  std::vector<Primitive> drawn;
  std::vector<std::string> described() const;
  std::vector<std::string> texts() const;
  // All marks of one colour and kind.
  std::vector<Primitive> marks(Primitive::Kind kind, const DRAWBOT_ColorRGBA& color) const;

  // Calls so far by the function's name. The n-th call of one is refused with `error`.
  std::map<std::string, int> calls;
  void refuse(const std::string& function, int n, std::int32_t error = 4711);
  bool refused = false;
  bool hideSuites = false;  // none is there
  int outstanding() const;
  int violations = 0;

 private:
  friend struct Callbacks;
  struct Object {
    std::string kind;
    DRAWBOT_ColorRGBA color{};
    float size = 0.0F;
    std::vector<DRAWBOT_PointF32> points{};
  };

  // Hands out the callbacks, and takes calls on them.
  void connect();
  void disconnect();
  std::int32_t called(const std::string& function);
  template <class Ref>
  void make(Object object, Ref* ref);
  template <class Ref>
  Object* find(Ref ref, const char* kind);
  void drop(std::uintptr_t id, const char* kind);

  std::map<std::uintptr_t, Object> objects_;
  std::uintptr_t nextObject_ = 100;
  std::map<std::string, int> suites_;
  int heldParams_ = 0;
  std::string refusedFunction_;
  int refusedCall_ = 0;
  std::int32_t refusal_ = 0;
  SPBasicSuite basic_{};
  PF_Context* contextPointer_ = &context;
  std::array<PF_ParamDef, PARAM_COUNT> values_{};
  std::array<PF_ParamDef*, PARAM_COUNT> pointers_{};
  SequenceState* state_ = nullptr;
  std::vector<PF_Pixel> picture_;
};

}  // namespace varilum::test
