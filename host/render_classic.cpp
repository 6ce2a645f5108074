// host/render_classic.cpp — FRAME_SETUP, RENDER and FRAME_SETDOWN.
#include "host/effect_state.h"
#include "host/error.h"
#include "host/frame_time.h"
#include "host/render.h"
#include "host/render_target.h"

namespace host {
namespace {

void checkDepth(const EffectState& effect, Depth depth) {
  const bool deep =
      (effect.outFlags & static_cast<std::uint32_t>(PF_OutFlag_DEEP_COLOR_AWARE)) != 0 &&
      effect.state.role != Role::premiere;
  if (depth == Depth::bits8 || (depth == Depth::bits16 && deep)) return;
  throw Error("The effect's plain render command does not work at this depth.");
}

// Where the output lies, in layer coordinates, as FRAME_SETUP asked for it.
PF_LRect outputArea(const EffectState& effect, const PF_LRect& whole, const PF_OutData& answer) {
  const PF_LRect asked{-answer.origin.h, -answer.origin.v, answer.width - answer.origin.h,
                       answer.height - answer.origin.v};
  if (asked.left == whole.left && asked.top == whole.top && asked.right == whole.right &&
      asked.bottom == whole.bottom) {
    return whole;
  }
  constexpr auto kResizes =
      static_cast<std::uint32_t>(PF_OutFlag_I_EXPAND_BUFFER | PF_OutFlag_I_SHRINK_BUFFER);
  if ((effect.outFlags & kResizes) == 0) {
    effect.state.report("FRAME_SETUP changed the output's size, and the flags do not say so");
    return whole;
  }
  if (answer.width <= 0 || answer.height <= 0 || answer.width > PF_MAX_WORLD_WIDTH ||
      answer.height > PF_MAX_WORLD_HEIGHT) {
    effect.state.report("FRAME_SETUP asked for an impossible size of the output");
    return whole;
  }
  return asked;
}

struct FrameLoan {
  SequenceCopy& copy;
  std::unique_ptr<LayerFrame> frame;
  ~FrameLoan() {
    if (frame) copy.frames.giveBack(copy.effect.state, std::move(frame));
  }
};

}  // namespace

std::string renderClassic(SequenceCopy& copy, std::int32_t frame, Depth depth, Image& output) {
  EffectState& effect = copy.effect;
  HostState& state = effect.state;
  checkDepth(effect, depth);
  const LayerInfo& layer = copy.layer.info();
  const Stress& stress = state.options.stress;
  const std::int32_t time = copy.renderTime(frame);
  const PF_LRect whole = reducedBounds(layer, stress.downsample);
  const std::string what = "render frame " + std::to_string(frame);
  // Plain rendering draws on the whole world: it is the layer, with no room around it.
  const FrameView view{{}, stress.downsample, {}};
  std::string key = baseCacheKey(copy, time, depth, RenderPath::classic);

  Command setup(effect, &copy, PF_Cmd_FRAME_SETUP);
  setup.setTime(time);
  setup.giveParams();
  setup.out.width = whole.right;
  setup.out.height = whole.bottom;
  setup.require(setup.send(), what);
  void** const frameData = setup.out.frame_data;
  const bool skipped = setup.out.width == 0 && setup.out.height == 0;

  std::exception_ptr failure;
  try {
    if (skipped) {
      clear(output);
    } else {
      FrameLoan input{copy, copy.frames.read(state, copy.layer,
                                             frameAt(layer, {time, layer.timeScale}), depth, view)};
      const PF_LRect area = outputArea(effect, whole, setup.out);
      RenderTarget target(state, output, area, depth, view.margins, whole);
      Command render(effect, &copy, PF_Cmd_RENDER);
      render.setTime(time);
      render.in.output_origin_x = -area.left;
      render.in.output_origin_y = -area.top;
      render.in.frame_data = frameData;
      render.out.frame_data = frameData;
      render.giveParams(&input.frame->world);
      render.require(render.send(nullptr, &target.world()), what);
      target.finish(state);
    }
  } catch (...) {
    failure = std::current_exception();
  }

  Command setdown(effect, &copy, PF_Cmd_FRAME_SETDOWN);
  setdown.setTime(time);
  setdown.in.frame_data = frameData;
  setdown.out.frame_data = frameData;
  setdown.giveParams();
  const std::int32_t result = setdown.send();
  if (failure) std::rethrow_exception(failure);
  setdown.require(result, what);
  return key;
}

}  // namespace host
