// access/smart_layers.cpp — the input and output images of a smart render.
#include "access/smart_layers.h"

#include "hostapi/commands.h"

namespace varilum {

SmartLayers::SmartLayers(const PF_InData& in, const PF_SmartRenderCallbacks& callbacks,
                         std::int32_t id) noexcept
    : in_(in), callbacks_(callbacks), id_(id) {
  error_ = callbacks.checkout_layer_pixels(in.effect_ref, id, &input_);
  if (error_ == 0) error_ = callbacks.checkout_output(in.effect_ref, &output_);
  if (error_ == 0 && (input_ == nullptr || output_ == nullptr)) error_ = PF_Err_BAD_CALLBACK_PARAM;
}

std::int32_t SmartLayers::checkIn() noexcept {
  if (!held_) return 0;
  held_ = false;
  return callbacks_.checkin_layer_pixels(in_.effect_ref, id_);
}

}  // namespace varilum
