// analysis/upstream_frame.cpp — the current frame of the layer as it is before this effect.
#include "analysis/upstream_frame.h"

namespace varilum {
namespace {

// The host tells requests of one panel apart by it; this panel makes only one kind.
constexpr std::uint32_t kPurpose = 1;

}  // namespace

UpstreamFrame::UpstreamFrame(PF_InData& in, PF_EventExtra& event, std::int32_t pluginId)
    : customUi_(in, kPFEffectCustomUISuite, kPFEffectCustomUISuiteVersion2),
      interface_(in, kAEGPPFInterfaceSuite, kAEGPPFInterfaceSuiteVersion1),
      effects_(in, kAEGPEffectSuite, kAEGPEffectSuiteVersion4),
      optionsSuite_(in, kAEGPLayerRenderOptionsSuite, kAEGPLayerRenderOptionsSuiteVersion2),
      managers_(in, kAEGPRenderAsyncManagerSuite, kAEGPRenderAsyncManagerSuiteVersion1),
      renders_(in, kAEGPRenderSuite, kAEGPRenderSuiteVersion5),
      worlds_(in, kAEGPWorldSuite, kAEGPWorldSuiteVersion3),
      error_(request(in, event, pluginId)) {}

UpstreamFrame::~UpstreamFrame() {
  if (receipt_ != nullptr) renders_->AEGP_CheckinFrame(receipt_);
  if (options_ != nullptr) optionsSuite_->AEGP_Dispose(options_);
  if (effect_ != nullptr) effects_->AEGP_DisposeEffect(effect_);
}

std::int32_t UpstreamFrame::request(PF_InData& in, PF_EventExtra& event,
                                    std::int32_t pluginId) noexcept {
  PF_AsyncManagerP manager = nullptr;
  std::int32_t error = customUi_->PF_GetContextAsyncManager(&in, &event, &manager);
  // What comes back empty without an error is not ready yet.
  if (error != 0 || manager == nullptr) return error;
  error = interface_->AEGP_GetNewEffectForEffect(pluginId, in.effect_ref, &effect_);
  if (error != 0 || effect_ == nullptr) return error;
  error = optionsSuite_->AEGP_NewFromUpstreamOfEffect(pluginId, effect_, &options_);
  if (error != 0 || options_ == nullptr) return error;
  error = managers_->AEGP_CheckoutOrRender_LayerFrame_AsyncManager(manager, kPurpose, options_,
                                                                   &receipt_);
  if (error != 0 || receipt_ == nullptr) return error;
  AEGP_WorldH world = nullptr;
  error = renders_->AEGP_GetReceiptWorld(receipt_, &world);
  if (error != 0 || world == nullptr) return error;
  error = worlds_->AEGP_FillOutPFEffectWorld(world, &world_);
  if (error != 0) world_ = {};
  return error;
}

}  // namespace varilum
