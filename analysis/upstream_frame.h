// analysis/upstream_frame.h — the current frame of the layer as it is before this effect.
#pragma once

#include <cstdint>

#include "access/suite.h"
#include "hostapi/command_data.h"
#include "hostapi/events.h"
#include "hostapi/suites/aegp_effect.h"
#include "hostapi/suites/aegp_interface.h"
#include "hostapi/suites/aegp_layer_render_options.h"
#include "hostapi/suites/aegp_render.h"
#include "hostapi/suites/aegp_world.h"
#include "hostapi/suites/custom_ui.h"

namespace varilum {

// [UI thread, DRAW] Asks the panel's render manager for the frame. Everything is given back on
// destruction, the last taken first.
class UpstreamFrame {
 public:
  // pluginId: the effect's number among After Effects' plug-ins. Throws when a suite is missing.
  UpstreamFrame(PF_InData& in, PF_EventExtra& event, std::int32_t pluginId);
  UpstreamFrame(const UpstreamFrame&) = delete;
  UpstreamFrame& operator=(const UpstreamFrame&) = delete;
  ~UpstreamFrame();

  // The host's first error; with one there is no frame.
  std::int32_t error() const noexcept { return error_; }
  // A view of the host's pixels, to be read only; its data is null while the frame is not ready.
  const PF_EffectWorld& world() const noexcept { return world_; }

 private:
  std::int32_t request(PF_InData& in, PF_EventExtra& event, std::int32_t pluginId) noexcept;

  Suite<PF_EffectCustomUISuite2> customUi_;
  Suite<AEGP_PFInterfaceSuite1> interface_;
  Suite<AEGP_EffectSuite4> effects_;
  Suite<AEGP_LayerRenderOptionsSuite2> optionsSuite_;
  Suite<AEGP_RenderAsyncManagerSuite1> managers_;
  Suite<AEGP_RenderSuite5> renders_;
  Suite<AEGP_WorldSuite3> worlds_;
  AEGP_EffectRefH effect_ = nullptr;
  AEGP_LayerRenderOptionsH options_ = nullptr;
  AEGP_FrameReceiptH receipt_ = nullptr;
  PF_EffectWorld world_{};
  std::int32_t error_;
};

}  // namespace varilum
