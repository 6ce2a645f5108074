// access/smart_layers.h — the input and output images of a smart render.
#pragma once

#include <cstdint>

#include "hostapi/command_data.h"
#include "hostapi/smart_render.h"

namespace varilum {

// Checks out the input under id and then the output. The input is checked in on destruction,
// even after a failed check-out, or before, when the result of doing so matters.
class SmartLayers {
 public:
  SmartLayers(const PF_InData& in, const PF_SmartRenderCallbacks& callbacks,
              std::int32_t id) noexcept;
  SmartLayers(const SmartLayers&) = delete;
  SmartLayers& operator=(const SmartLayers&) = delete;
  ~SmartLayers() { checkIn(); }

  // Result of the check-outs; an image that is missing without an error counts as
  // PF_Err_BAD_CALLBACK_PARAM. With an error there are no images.
  std::int32_t error() const noexcept { return error_; }
  PF_EffectWorld& input() const noexcept { return *input_; }
  PF_EffectWorld& output() const noexcept { return *output_; }

  std::int32_t checkIn() noexcept;

 private:
  const PF_InData& in_;
  const PF_SmartRenderCallbacks& callbacks_;
  std::int32_t id_;
  std::int32_t error_;
  PF_EffectWorld* input_ = nullptr;
  PF_EffectWorld* output_ = nullptr;
  bool held_ = true;
};

}  // namespace varilum
