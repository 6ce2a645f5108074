// render/smart_pre_render.cpp — SMART_PRE_RENDER: what a frame needs, and what it will look like.
#include "render/smart_pre_render.h"

#include <cstring>

#include "access/handle_lock.h"
#include "access/param_checkout.h"
#include "access/suite.h"
#include "hostapi/commands.h"
#include "hostapi/suites/handle.h"
#include "plugin/global_state.h"
#include "plugin/param_index.h"
#include "render/pre_render_block.h"
#include "render/render_areas.h"
#include "stats/correction_table.h"
#include "stats/frame_count.h"
#include "stats/number_conversion.h"
#include "stats/sequence_arrays.h"
#include "stats/sequence_state.h"
#include "stats/target_checkouts.h"

namespace varilum {
namespace {

// A new block, zeroed and locked; the host's once handed over.
class NewBlock {
 public:
  NewBlock(const PF_InData& in, PF_PreRenderOutput& output)
      : handles_(in, kPFHandleSuite, kPFHandleSuiteVersion1),
        handle_(handles_->host_new_handle(sizeof(PreRenderBlock))) {
    if (handle_ == nullptr) return;
    block_ = static_cast<PreRenderBlock*>(handles_->host_lock_handle(handle_));
    if (block_ == nullptr) {
      handles_->host_dispose_handle(handle_);
      return;
    }
    output.pre_render_data = handle_;
    output.delete_pre_render_data_func = nullptr;
    *block_ = PreRenderBlock{};
  }
  NewBlock(const NewBlock&) = delete;
  NewBlock& operator=(const NewBlock&) = delete;
  ~NewBlock() {
    if (block_ != nullptr) handles_->host_unlock_handle(handle_);
  }

  explicit operator bool() const noexcept { return block_ != nullptr; }
  PreRenderBlock& operator*() const noexcept { return *block_; }

 private:
  const Suite<PF_HandleSuite1> handles_;
  void** handle_;
  PreRenderBlock* block_ = nullptr;
};

void copyFrameLevels(const LevelLocks& levels, std::size_t frame, PreRenderBlock& block,
                     SequenceState& state) noexcept {
  block.desiredSpread = static_cast<float>(levels.desiredSpread()[frame]);
  block.inputSpread = static_cast<float>(levels.inputSpread()[frame]);
  block.desiredLuminance = levels.desiredLuminance()[frame];
  block.inputLuminance = levels.inputLuminance()[frame];
  state.frameDesiredSpread = block.desiredSpread;
  state.frameInputSpread = block.inputSpread;
  state.frameDesiredLuminance = block.desiredLuminance;
  state.frameInputLuminance = block.inputLuminance;
}

// Reads parameters at the current time, one after the other, until the first error.
class ParamReader {
 public:
  explicit ParamReader(const PF_InData& in) : in_(in) {}

  std::int32_t error() const noexcept { return error_; }

  template <class Take>
  void read(std::int32_t index, Take take) {
    if (error_ != 0) return;
    ParamCheckout checkout{in_, index, in_.current_time};
    error_ = checkout.error();
    if (error_ != 0) return;
    take(checkout.value().u);
    error_ = checkout.checkIn();
  }

 private:
  const PF_InData& in_;
  std::int32_t error_ = 0;
};

std::int32_t readParameters(const PF_InData& in, PreRenderBlock& block, SequenceState& state) {
  using Value = PF_ParamDefUnion;
  ParamReader reader{in};
  reader.read(PARAM_DONT_DEFLICKER,
              [&](const Value& u) { block.dontDeflicker = u.bd.value != 0 ? 1 : 0; });
  reader.read(PARAM_ADJUST_CLIPPING,
              [&](const Value& u) { block.adjustClipping = u.bd.value != 0 ? 1 : 0; });
  // Unscaled, unlike in RENDER: the knee lies beyond white and never applies here.
  reader.read(PARAM_CLIPPING_PERCENT, [&](const Value& u) { block.clippingPercent = u.fd.value; });
  reader.read(PARAM_CORRECTION_METHOD, [&](const Value& u) {
    block.correctionMethod = static_cast<std::uint8_t>(u.pd.value);
  });
  reader.read(PARAM_NEEDS_ANALYZE,
              [&](const Value& u) { block.analysisComplete = u.bd.value != 0 ? 1 : 0; });
  reader.read(PARAM_DEFLICKER_METHOD, [&](const Value& u) {
    block.deflickerMethod = static_cast<std::uint8_t>(u.pd.value);
  });
  reader.read(PARAM_COUNTER, [&](const Value& u) { block.counter = truncateToInt(u.fs_d.value); });
  if (block.deflickerMethod == kDeflickerKeyframes) {
    reader.read(PARAM_LUMINANCE, [&](const Value& u) {
      readLuminanceValue(in, u.arb_d.value, block.desiredLuminance);
    });
    state.frameDesiredLuminance = block.desiredLuminance;
  } else {
    reader.read(PARAM_SMOOTHING_FRAMES, [](const Value&) {});
  }
  return reader.error();
}

std::int32_t mixIntoCacheKey(const PF_InData& in, const PF_PreRenderCallbacks& callbacks,
                             const PreRenderBlock& block) {
  if (callbacks.GuidMixInPtr == nullptr) return 0;
  const std::int32_t error =
      callbacks.GuidMixInPtr(in.effect_ref, sizeof block.desiredLuminance, &block.desiredLuminance);
  if (error != 0) return error;
  return callbacks.GuidMixInPtr(in.effect_ref, sizeof block.counter, &block.counter);
}

void buildTable(const PF_InData& in, PreRenderBlock& block, SequenceState& state) {
  state.adjustClipping = block.adjustClipping;
  state.clippingPercent = block.clippingPercent;
  state.correctionMethod = block.correctionMethod;
  buildCorrectionTable(state, block.dontDeflicker != 0, in.utils->ansi.log);
  std::memcpy(block.correctionTable, state.correctionTable, sizeof block.correctionTable);
  const bool isGamma = block.correctionMethod == kCorrectionGamma && block.dontDeflicker == 0;
  block.gammaValue = isGamma ? state.gammaValue : 1.0f;
}

std::int32_t fillBlock(const PF_InData& in, const PF_PreRenderCallbacks& callbacks,
                       const LevelLocks& levels, PreRenderBlock& block, SequenceState& state) {
  block.analysisComplete = state.analysisComplete;
  const std::int32_t frame = frameAt(in.current_time, in.time_step, state.frameCount);
  copyFrameLevels(levels, static_cast<std::size_t>(frame), block, state);
  std::int32_t error = readParameters(in, block, state);
  if (error == 0) error = mixIntoCacheKey(in, callbacks, block);
  buildTable(in, block, state);
  block.ready = 1;
  return error;
}

std::int32_t checkOutLayer(const PF_InData& in, const PF_PreRenderExtra& extra) {
  PF_RenderRequest request = extra.input->output_request;
  request.field = PF_Field_FRAME;
  request.preserve_rgb_of_zero_alpha = 1;
  PF_CheckoutResult layer{};
  const std::int32_t error =
      extra.cb->checkout_layer(in.effect_ref, PARAM_INPUT, kInputCheckout, &request,
                               in.current_time, in.time_step, in.time_scale, &layer);
  if (error != 0) return error;
  uniteWith(extra.output->result_rect, layer.result_rect);
  uniteWith(extra.output->max_result_rect, layer.max_result_rect);
  return 0;
}

}  // namespace

std::int32_t smartPreRender(const PF_InData& in, PF_OutData& out, PF_PreRenderExtra& extra) {
  std::int32_t error = 0;
  {
    const Locked<SequenceState> state{in, out.sequence_data};
    const Locked<GlobalState> global{in, out.global_data};
    if (!state || !global) return PF_Err_OUT_OF_MEMORY;
    const LevelLocks levels{in, *state};
    if (!levels) return PF_Err_OUT_OF_MEMORY;
    const NewBlock block{in, *extra.output};
    if (!block) return PF_Err_OUT_OF_MEMORY;
    error = fillBlock(in, *extra.cb, levels, *block, *state);
  }
  return error != 0 ? error : checkOutLayer(in, extra);
}

}  // namespace varilum
