// analysis/frame_loop.cpp — measuring every frame of the layer, one after the other.
#include "analysis/frame_loop.h"

#include "access/param_checkout.h"
#include "access/suite.h"
#include "analysis/analysis_rect.h"
#include "hostapi/commands.h"
#include "hostapi/suites/world.h"
#include "plugin/global_state.h"
#include "plugin/param_index.h"
#include "stats/compute_frame_stats.h"
#include "stats/invalidation.h"
#include "stats/number_conversion.h"
#include "stats/sequence_arrays.h"
#include "stats/sequence_state.h"
#include "stats/status_text.h"
#include "stats/target_checkouts.h"

namespace varilum {
namespace {

// The controls that hold for the whole run.
struct AnalysisSettings {
  bool useSubrect;
  bool favorBrighter;
  Rect rect;
  std::int32_t step;
};

AnalysisSettings readSettings(const PF_InData& in, PF_ParamDef** params) noexcept {
  AnalysisSettings settings{};
  settings.useSubrect = params[PARAM_USE_SUBRECT]->u.bd.value != 0;
  settings.favorBrighter = params[PARAM_FAVOR_BRIGHTER]->u.bd.value != 0;
  settings.rect = layerAnalysisRect(in, settings.useSubrect, params[PARAM_CORNER1]->u.td,
                                    params[PARAM_CORNER2]->u.td);
  settings.step = samplingStep(params[PARAM_SPEED]->u.fd.value, settings.rect);
  return settings;
}

class FrameLoop {
 public:
  FrameLoop(const PF_InData& in, const AnalysisSettings& settings, SequenceState& state,
            const LevelLocks& levels, AnalysisProgress& progress)
      : in_(in),
        settings_(settings),
        state_(state),
        levels_(levels),
        progress_(progress),
        worlds_(in, kPFWorldSuite, kPFWorldSuiteVersion2) {}

  // Result: 0, or the error that ended the loop.
  std::int32_t run() {
    const std::int32_t count = state_.frameCount;
    std::int32_t frame = 0;
    while (frame < count && state_.refreshPending != 0 && !cancelled_) {
      if (progress_.stopRequested()) {
        cancelled_ = true;
        break;
      }
      const std::int32_t error = visit(frame, count);
      if (error == PF_Interrupt_CANCEL) {
        cancelled_ = true;
        break;
      }
      if (error != 0) return error;
      ++frame;
    }
    complete_ = frame == count && !cancelled_;
    return 0;
  }

  // Every frame was visited, and nobody cancelled.
  bool complete() const noexcept { return complete_; }

 private:
  std::int32_t visit(std::int32_t frame, std::int32_t count) {
    FrameStats stats;
    FrameHistogram histogram;
    fetchFrameStats(in_, state_, frame, stats, histogram);

    ParamCheckout passedOver{in_, PARAM_DONT_DEFLICKER, frameTime(in_, frame)};
    if (passedOver.error() != 0) return passedOver.error();
    const bool readsPixels = passedOver.value().u.bd.value == 0 && !progress_.passesOverAll();
    if (const std::int32_t error = passedOver.checkIn(); error != 0) return error;

    if (readsPixels) {
      const std::int32_t error = measure(frame, stats, histogram);
      if (error != 0) return error;
    } else {
      resetFrameStats(stats);
      stats.frame = frame;
      stats.analyzed = 1;
    }

    const auto i = static_cast<std::size_t>(frame);
    levels_.inputLuminance()[i] = stats.inputLuminance;
    levels_.inputSpread()[i] = stats.inputSpread;
    storeFrameStats(in_, state_, frame, stats, histogram);
    formatStatusText(state_, frame + 1, count);
    return report(frame, count, readsPixels);
  }

  std::int32_t measure(std::int32_t frame, FrameStats& stats, FrameHistogram& histogram) {
    const std::int32_t time = frameTime(in_, frame);
    ParamCheckout layer{in_, PARAM_INPUT, time};
    if (layer.error() != 0) return layer.error();
    const PF_LayerDef& world = layer.value().u.ld;
    if (const std::int32_t error = noteFormat(world); error != 0) return error;

    Rect rect = settings_.rect;
    if (settings_.useSubrect) {
      ParamCheckout corner1{in_, PARAM_CORNER1, time};
      if (corner1.error() != 0) return corner1.error();
      ParamCheckout corner2{in_, PARAM_CORNER2, time};
      if (corner2.error() != 0) return corner2.error();
      rect =
          worldAnalysisRect(corner1.value().u.td, corner2.value().u.td, world.width, world.height);
      const std::int32_t error2 = corner2.checkIn();
      const std::int32_t error1 = corner1.checkIn();
      if (error2 != 0 || error1 != 0) return error2 != 0 ? error2 : error1;
    }
    const PixelBuffer pixels =
        viewPixels(world.data, world.rowbytes, world.width, world.height, state_.isFloat != 0,
                   (world.world_flags & PF_WorldFlag_DEEP) != 0);
    computeFrameStats(stats, histogram, pixels, rect, frame, settings_.favorBrighter,
                      settings_.step);
    return layer.checkIn();
  }

  // Depth of the layer as the host names it, for whoever reads its pixels later.
  std::int32_t noteFormat(const PF_LayerDef& world) noexcept {
    state_.isFloat = 0;
    if (world.data == nullptr) return 0;
    std::int32_t format = PF_PixelFormat_INVALID;
    const std::int32_t error = worlds_->PF_GetPixelFormat(&world, &format);
    if (error != 0) return error;
    if (format == PF_PixelFormat_ARGB32) state_.inputDeep = 0;
    if (format == PF_PixelFormat_ARGB64) state_.inputDeep = 1;
    if (format == PF_PixelFormat_ARGB128) state_.isFloat = 1;
    return 0;
  }

  std::int32_t report(std::int32_t frame, std::int32_t count, bool readPixels) {
    const std::int32_t done = frame + 1;
    if (frame == 0 || readPixels) {
      const std::int32_t error = progress_.framesRead(done + 1, count);
      if (error == PF_Interrupt_CANCEL) {
        cancelled_ = true;
      } else if (error != 0) {
        return error;
      }
    }
    return progress_.frameStored(state_.statusText);
  }

  const PF_InData& in_;
  const AnalysisSettings settings_;
  SequenceState& state_;
  const LevelLocks& levels_;
  AnalysisProgress& progress_;
  const Suite<PF_WorldSuite2> worlds_;
  bool cancelled_ = false;
  bool complete_ = false;
};

std::int32_t measureFrames(const PF_InData& in, PF_ParamDef** params, const GlobalState& global,
                           SequenceState& state, const LevelLocks& levels,
                           AnalysisProgress& progress) {
  const AnalysisSettings settings = readSettings(in, params);
  const bool due =
      state.refreshPending != 0 || (global.renderEngine != 0 && state.analysisComplete == 0);
  state.refreshPending = due ? 1 : 0;
  if (!due) return 0;

  state.analysisComplete = 0;
  FrameLoop loop{in, settings, state, levels, progress};
  const std::int32_t error = loop.run();
  if (loop.complete() && state.refreshPending != 0) {
    state.analysisComplete = countAnalyzedFrames(in, state) ? 1 : 0;
  }
  state.refreshPending = 0;
  state.recomputeDesired = 1;
  return error;
}

}  // namespace

std::int32_t runAnalysis(const PF_InData& in, PF_OutData& out, PF_ParamDef** params,
                         AnalysisProgress& progress) {
  const Locked<SequenceState> state{in, out.sequence_data};
  const Locked<GlobalState> global{in, out.global_data};
  if (!state) return 0;
  const LevelLocks levels{in, *state};

  // A layer without frames has no arrays, and counts as analysed.
  const bool hasLevels = levels || state->frameCount < 1;
  std::int32_t error = 0;
  if (hasLevels && global && params != nullptr) {
    error = measureFrames(in, params, *global, *state, levels, progress);
  }
  if (hasLevels && state->recomputeDesired != 0) {
    const std::int32_t later = computeTargets(in, params, *state, levels.arrays());
    if (error == 0) error = later;
  }
  return error == PF_Interrupt_CANCEL ? 0 : error;
}

}  // namespace varilum
