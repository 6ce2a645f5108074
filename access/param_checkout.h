// access/param_checkout.h — a parameter's value at some time, checked out from the host.
#pragma once

#include <cstdint>

#include "hostapi/command_data.h"
#include "hostapi/parameters.h"

namespace varilum {

// Checks in when it dies, or before, when the result of doing so matters.
class ParamCheckout {
 public:
  // index: 0 is the input layer. time in the host's units, as in.time_scale tells.
  ParamCheckout(const PF_InData& in, std::int32_t index, std::int32_t time) noexcept;
  ParamCheckout(const ParamCheckout&) = delete;
  ParamCheckout& operator=(const ParamCheckout&) = delete;
  ~ParamCheckout() { checkIn(); }

  // Result of checking out; with an error there is no value.
  std::int32_t error() const noexcept { return error_; }
  const PF_ParamDef& value() const noexcept { return definition_; }
  PF_ParamDef& value() noexcept { return definition_; }

  // Result of checking in; 0 when there is nothing to check in. The value is gone afterwards.
  std::int32_t checkIn() noexcept;

 private:
  const PF_InData& in_;
  PF_ParamDef definition_{};
  std::int32_t error_;
  bool held_;
};

}  // namespace varilum
