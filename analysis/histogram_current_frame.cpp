// analysis/histogram_current_frame.cpp — measuring the frame under the time cursor, for the panel.
#include "analysis/histogram_current_frame.h"

#include "access/param_checkout.h"
#include "access/suite.h"
#include "analysis/analysis_rect.h"
#include "analysis/upstream_frame.h"
#include "hostapi/suites/world.h"
#include "plugin/param_index.h"
#include "stats/compute_frame_stats.h"
#include "stats/frame_count.h"
#include "stats/sequence_arrays.h"
#include "stats/sequence_state.h"
#include "stats/target_checkouts.h"

namespace varilum {
namespace {

bool isDeep(const PF_EffectWorld& world) noexcept {
  return (world.world_flags & PF_WorldFlag_DEEP) != 0;
}

PixelBuffer viewWorld(const PF_EffectWorld& world, const SequenceState& state) noexcept {
  return viewPixels(world.data, world.rowbytes, world.width, world.height, state.isFloat != 0,
                    isDeep(world));
}

// The rectangle between the corners as they stand at the frame's time, or all of the layer.
std::int32_t rectAt(const PF_InData& in, PF_ParamDef** params, std::int32_t time,
                    const PF_EffectWorld& world, Rect& rect) noexcept {
  if (params[PARAM_USE_SUBRECT]->u.bd.value == 0) {
    rect = layerAnalysisRect(in, false, {}, {});
    return 0;
  }
  ParamCheckout corner1{in, PARAM_CORNER1, time};
  if (corner1.error() != 0) return corner1.error();
  ParamCheckout corner2{in, PARAM_CORNER2, time};
  if (corner2.error() != 0) return corner2.error();
  rect = worldAnalysisRect(corner1.value().u.td, corner2.value().u.td, world.width, world.height);
  const std::int32_t error2 = corner2.checkIn();
  const std::int32_t error1 = corner1.checkIn();
  return error2 != 0 ? error2 : error1;
}

// The rendered world's depth as the host names it, into the instance's flags.
std::int32_t noteFormat(const PF_InData& in, const PF_EffectWorld& world, SequenceState& state) {
  const Suite<PF_WorldSuite2> worlds{in, kPFWorldSuite, kPFWorldSuiteVersion2};
  std::int32_t format = PF_PixelFormat_INVALID;
  state.isFloat = 0;
  const std::int32_t error = worlds->PF_GetPixelFormat(&world, &format);
  if (error != 0) return error;
  if (format == PF_PixelFormat_ARGB32) state.inputDeep = 0;
  if (format == PF_PixelFormat_ARGB64) state.inputDeep = 1;
  if (format == PF_PixelFormat_ARGB128) state.isFloat = 1;
  return 0;
}

struct Measurement {
  std::int32_t frame;
  PixelBuffer pixels;
  Rect rect;
  std::int32_t step;
  bool favorBrighter;
};

// Measures, stores, and computes the targets; the frame in hand is this one afterwards.
std::int32_t measureAndStore(const PF_InData& in, PF_ParamDef** params, SequenceState& state,
                             const LevelLocks& levels, Measurement what) {
  FrameStats stats;
  FrameHistogram histogram;
  resetFrameStats(stats);
  resetFrameHistogram(histogram);
  computeFrameStats(stats, histogram, what.pixels, what.rect, what.frame, what.favorBrighter,
                    what.step);
  // The panel's result counts as analysed, even of an empty rectangle; but the analysis itself
  // measures the layer's own pixels, so it is not to take this walk for its own.
  stats.analyzed = 1;
  stats.walked = 0;
  stats.frame = what.frame;

  const auto i = static_cast<std::size_t>(what.frame);
  levels.inputLuminance()[i] = stats.inputLuminance;
  levels.inputSpread()[i] = stats.inputSpread;
  storeFrameStats(in, state, what.frame, stats, histogram);
  const std::int32_t error = computeTargets(in, params, state, levels.arrays());
  state.frameDesiredLuminance = levels.desiredLuminance()[i];
  state.frameDesiredSpread = static_cast<float>(levels.desiredSpread()[i]);
  state.currentStats = stats;
  state.currentHistogram = histogram;
  return error;
}

void countUse(SequenceState& state) noexcept {
  ++state.useCounter;
  state.reserved96 = 0;
}

}  // namespace

std::int32_t histogramCurrentFrameRendered(PF_InData& in, PF_OutData& out, PF_ParamDef** params,
                                           const GlobalState& global, PF_EventExtra& event) {
  const UpstreamFrame upstream{in, event, global.aegpPluginId};
  if (upstream.error() != 0) return upstream.error();
  const PF_EffectWorld& world = upstream.world();
  const Locked<SequenceState> state{in, out.sequence_data};
  if (!state) return 0;
  const LevelLocks levels{in, *state};
  if (!levels) return 0;
  countUse(*state);
  const std::int32_t frame = in.time_step > 0 ? in.current_time / in.time_step : 0;
  if (world.data == nullptr || frame < 0 || frame >= state->frameCount) return 0;

  Rect rect{};
  std::int32_t error = rectAt(in, params, frameTime(in, frame), world, rect);
  if (error == 0) error = noteFormat(in, world, *state);
  if (error != 0) return error;
  ParamCheckout speed{in, PARAM_SPEED, 0};
  if (speed.error() != 0) return speed.error();
  const std::int32_t step = samplingStep(speed.value().u.fd.value, rect);
  error = speed.checkIn();
  if (error != 0) return error;

  const PixelBuffer pixels = viewWorld(world, *state);
  if (pixels.data == nullptr) return 0;
  return measureAndStore(in, params, *state, levels, {frame, pixels, rect, step, false});
}

void histogramCurrentFrameInput(const PF_InData& in, PF_OutData& out, PF_ParamDef** params,
                                const GlobalState& global, const PF_EffectWorld* output) {
  const Locked<SequenceState> state{in, out.sequence_data};
  if (!state) return;
  const LevelLocks levels{in, *state};
  if (!levels) return;
  countUse(*state);
  const std::int32_t frame = frameAt(in.current_time, in.time_step, state->frameCount);
  const std::int32_t time = frameTime(in, frame);

  ParamCheckout layer{in, PARAM_INPUT, time};
  if (layer.error() != 0) return;
  const PF_EffectWorld& world = layer.value().u.ld;
  state->isFloat = 0;
  state->inputDeep = isDeep(world) ? 1 : 0;
  state->outputDeep = output != nullptr && isDeep(*output) ? 1 : 0;
  if (global.renderEngine != 0 && state->analysisComplete == 0) state->refreshPending = 1;

  Rect rect{};
  if (rectAt(in, params, time, world, rect) != 0) return;
  const PixelBuffer pixels = viewWorld(world, *state);
  if (pixels.data == nullptr) return;
  const std::int32_t step = samplingStep(params[PARAM_SPEED]->u.fd.value, rect);
  const bool favorBrighter = params[PARAM_FAVOR_BRIGHTER]->u.bd.value != 0;
  measureAndStore(in, params, *state, levels, {frame, pixels, rect, step, favorBrighter});
}

}  // namespace varilum
