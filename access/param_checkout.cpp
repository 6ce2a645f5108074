// access/param_checkout.cpp — a parameter's value at some time, checked out from the host.
#include "access/param_checkout.h"

namespace varilum {

ParamCheckout::ParamCheckout(const PF_InData& in, std::int32_t index, std::int32_t time) noexcept
    : in_(in),
      error_(in.inter.checkout_param(in.effect_ref, index, time, in.time_step, in.time_scale,
                                     &definition_)),
      held_(error_ == 0) {}

std::int32_t ParamCheckout::checkIn() noexcept {
  if (!held_) return 0;
  held_ = false;
  return in_.inter.checkin_param(in_.effect_ref, &definition_);
}

}  // namespace varilum
