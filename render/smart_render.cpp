// render/smart_render.cpp — SMART_RENDER: the pixels of a frame that was settled before.
#include "render/smart_render.h"

#include "access/smart_layers.h"
#include "access/suite.h"
#include "analysis/analysis_rect.h"
#include "hostapi/commands.h"
#include "hostapi/suites/handle.h"
#include "hostapi/suites/iterate.h"
#include "hostapi/suites/world.h"
#include "render/pre_render_block.h"
#include "render/render_areas.h"

namespace varilum {
namespace {

// The host's block, locked; null data when there is none.
class BlockLock {
 public:
  BlockLock(const PF_InData& in, void* data)
      : handles_(in, kPFHandleSuite, kPFHandleSuiteVersion1), handle_(static_cast<void**>(data)) {
    block_ = static_cast<PreRenderBlock*>(handles_->host_lock_handle(handle_));
  }
  BlockLock(const BlockLock&) = delete;
  BlockLock& operator=(const BlockLock&) = delete;
  ~BlockLock() {
    if (block_ != nullptr) handles_->host_unlock_handle(handle_);
  }

  explicit operator bool() const noexcept { return block_ != nullptr; }
  PreRenderBlock* operator->() const noexcept { return block_; }
  PreRenderBlock& operator*() const noexcept { return *block_; }

 private:
  const Suite<PF_HandleSuite1> handles_;
  void** handle_;
  PreRenderBlock* block_;
};

// What is run over the pixels, and where.
struct Iteration {
  PF_InData& in;
  const PF_Rect& area;
  FrameCorrection& correction;
  PF_EffectWorld& input;
  PF_EffectWorld& output;
};

template <class SuiteTable, class Kernel>
std::int32_t iterate(const Iteration& run, const char* suiteName, std::int32_t version,
                     Kernel kernel) {
  const Suite<SuiteTable> suite{run.in, suiteName, version};
  return suite->iterate(&run.in, 0, run.output.height, &run.input, &run.area, &run.correction,
                        kernel, &run.output);
}

std::int32_t iterateFormat(const Iteration& run, std::int32_t format) {
  switch (format) {
    case PF_PixelFormat_ARGB128:
      return iterate<PF_IterateFloatSuite1>(run, kPFIterateFloatSuite, kPFIterateFloatSuiteVersion1,
                                            pixelKernelFloat(run.correction));
    case PF_PixelFormat_ARGB64:
      return iterate<PF_Iterate16Suite1>(run, kPFIterate16Suite, kPFIterate16SuiteVersion1,
                                         pixelKernel16(run.correction));
    case PF_PixelFormat_ARGB32:
      return iterate<PF_Iterate8Suite1>(run, kPFIterate8Suite, kPFIterate8SuiteVersion1,
                                        pixelKernel8(run.correction));
    default:
      return PF_Err_BAD_CALLBACK_PARAM;
  }
}

std::int32_t renderLayers(PF_InData& in, PreRenderBlock& block, PF_EffectWorld& input,
                          PF_EffectWorld& output) {
  const Suite<PF_WorldSuite2> worlds{in, kPFWorldSuite, kPFWorldSuiteVersion2};
  std::int32_t format = PF_PixelFormat_INVALID;
  const std::int32_t error = worlds->PF_GetPixelFormat(&output, &format);
  if (error != 0) return error;

  const FrameArea frame{in.output_origin_x, in.output_origin_y,
                        scaledSize(in.width, in.downsample_x),
                        scaledSize(in.height, in.downsample_y)};
  if (block.analysisComplete == 0) block.banner = bannerRect(frame);
  block.corner = cornerRect(frame);
  const PF_Rect area = clippedArea(frame, input, output);
  FrameCorrection correction = correctionOf(block);
  const bool known = format == PF_PixelFormat_ARGB128 || format == PF_PixelFormat_ARGB64 ||
                     format == PF_PixelFormat_ARGB32;
  if (known && isEmpty(area)) return 0;
  return iterateFormat({in, area, correction, input, output}, format);
}

}  // namespace

std::int32_t smartRender(PF_InData& in, PF_SmartRenderExtra& extra) {
  if (extra.input->pre_render_data == nullptr) return 0;
  const BlockLock block{in, extra.input->pre_render_data};
  if (!block) return 0;
  SmartLayers layers{in, *extra.cb, kInputCheckout};
  if (layers.error() != 0) return layers.error();
  const std::int32_t error = renderLayers(in, *block, layers.input(), layers.output());
  const std::int32_t later = layers.checkIn();
  return error != 0 ? error : later;
}

}  // namespace varilum
