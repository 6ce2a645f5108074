// tests/ui/recording_host.cpp — a host for one panel: it records, counts, and refuses on demand.
#include "tests/ui/recording_host.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>

#include "stats/lifecycle.h"
#include "ui/events.h"

namespace varilum::test {
namespace {

std::string print(const char* format, auto... values) {
  char text[200];
  std::snprintf(text, sizeof text, format, values...);
  return text;
}

}  // namespace

std::string Primitive::describe() const {
  const std::string tone = print("(%.4g %.4g %.4g)", color.red, color.green, color.blue);
  std::string path;
  if (points.size() > 4) {
    path = print("%d points", static_cast<int>(points.size()));
  } else {
    for (const DRAWBOT_PointF32& point : points) {
      path += print(path.empty() ? "%g,%g" : " %g,%g", point.x, point.y);
    }
  }
  switch (kind) {
    case Kind::rect:
      return "rect " + tone + print(" %g,%g %gx%g", rect.left, rect.top, rect.width, rect.height);
    case Kind::stroke:
      return "stroke " + tone + print(" %g ", size) + path;
    case Kind::fill:
      return "fill " + tone + print(" rule %d ", rule) + path;
    case Kind::text:
      return "text " + tone + " " + path + " '" + text + "'";
  }
  return {};
}

std::int32_t RecordingHost::called(const std::string& function) {
  const int call = ++calls[function];
  if (function != refusedFunction_ || call != refusedCall_) return 0;
  refused = true;
  return refusal_;
}

RecordingHost::RecordingHost(std::int32_t frames, std::int32_t frame) {
  connect();
  in.utils = memory.utils();
  in.time_step = 10;
  in.total_time = frames * 10;
  in.current_time = frame * 10;
  in.time_scale = 250;
  in.width = 200;
  in.height = 100;
  in.downsample_x = {1, 1};
  in.downsample_y = {1, 1};

  for (std::size_t i = 0; i < values_.size(); ++i) pointers_[i] = &values_[i];
  param(PARAM_SPEED).u.fd.value = 1 << 16;
  param(PARAM_SMOOTHING_FRAMES).u.fd.value = 2 << 16;
  param(PARAM_DEFLICKER_METHOD).u.pd.value = 2;
  param(PARAM_CORRECTION_METHOD).u.pd.value = 1;
  param(PARAM_LUMINANCE).u.arb_d.value = memory.create(sizeof(double));
  setLuminance(128.0);

  global.isAfterEffects = 1;
  global.aegpPluginId = 77;
  EXPECT_EQ(setupSequence(in, out), 0);
  in.sequence_data = out.sequence_data;
  state_ = static_cast<SequenceState*>(memory.lock(out.sequence_data));

  context.w_type = PF_Window_EFFECT;
  event.contextH = &contextPointer_;
  event.effect_win.index = PARAM_LUMINANCE;
  event.effect_win.area = PF_EA_CONTROL;
  event.effect_win.current_frame = {10, 20, 410, 352};
  setPicture(200, 100, 90);
}

RecordingHost::~RecordingHost() {
  EXPECT_EQ(outstanding(), 0);
  EXPECT_EQ(violations, 0);
  memory.unlock(out.sequence_data);
  setdownSequence(in, out);
  memory.dispose(param(PARAM_LUMINANCE).u.arb_d.value);
  EXPECT_EQ(memory.live(), 0U);
  EXPECT_EQ(memory.violations(), 0);
  disconnect();
}

double RecordingHost::luminance() const {
  double level;
  std::memcpy(&level, *values_[PARAM_LUMINANCE].u.arb_d.value, sizeof level);
  return level;
}

void RecordingHost::setLuminance(double level) {
  std::memcpy(*param(PARAM_LUMINANCE).u.arb_d.value, &level, sizeof level);
}

void RecordingHost::analyze() {
  const LevelLocks locks = levels();
  for (std::size_t i = 0; i < locks.inputLuminance().size(); ++i) {
    locks.inputLuminance()[i] = 100.0 + 10.0 * static_cast<double>(i);
    locks.inputSpread()[i] = 12.5;
    locks.desiredLuminance()[i] = 125.0;
    locks.desiredSpread()[i] = 11.25;
  }
  const std::int32_t frame = in.current_time / in.time_step;
  FrameStats& stats = state_->currentStats;
  resetFrameStats(stats);
  stats.frame = frame;
  stats.analyzed = 1;
  stats.pixelCount = 1000;
  stats.belowTopCount = 905;
  stats.peak = 100;
  stats.totalPixels = 2000;
  FrameHistogram& histogram = state_->currentHistogram;
  resetFrameHistogram(histogram);
  histogram.luminance[100] = 100;
  histogram.luminance[101] = 50;
  storeFrameStats(in, *state_, frame, stats, histogram);
}

std::pair<FrameStats, FrameHistogram> RecordingHost::stored(std::int32_t frame) {
  std::pair<FrameStats, FrameHistogram> result;
  fetchFrameStats(in, *state_, frame, result.first, result.second);
  return result;
}

std::int32_t RecordingHost::send(std::int32_t type) {
  event.e_type = type;
  const EventResult result = handleEvent(&global, in, out, params(), nullptr, event);
  changedTargets = result.changedTargets;
  return result.error;
}

void RecordingHost::setPicture(std::int32_t width, std::int32_t height, std::uint8_t level) {
  picture_.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height),
                  {255, level, level, level});
  world = {};
  world.data = picture_.data();
  world.width = width;
  world.height = height;
  world.rowbytes = width * 4;
}

std::vector<std::string> RecordingHost::described() const {
  std::vector<std::string> result;
  for (const Primitive& primitive : drawn) result.push_back(primitive.describe());
  return result;
}

std::vector<std::string> RecordingHost::texts() const {
  std::vector<std::string> result;
  for (const Primitive& primitive : drawn) {
    if (primitive.kind == Primitive::Kind::text) result.push_back(primitive.text);
  }
  return result;
}

std::vector<Primitive> RecordingHost::marks(Primitive::Kind kind,
                                            const DRAWBOT_ColorRGBA& color) const {
  std::vector<Primitive> result;
  for (const Primitive& primitive : drawn) {
    if (primitive.kind == kind && primitive.color.red == color.red &&
        primitive.color.green == color.green && primitive.color.blue == color.blue) {
      result.push_back(primitive);
    }
  }
  return result;
}

void RecordingHost::refuse(const std::string& function, int n, std::int32_t error) {
  refusedFunction_ = function;
  refusedCall_ = calls[function] + n;
  refusal_ = error;
}

int RecordingHost::outstanding() const {
  int held = static_cast<int>(objects_.size()) + heldParams_ + memory.locks() - 1;
  for (const auto& [name, count] : suites_) held += count;
  return held;
}

}  // namespace varilum::test
