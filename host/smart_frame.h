// host/smart_frame.h — one frame on its way through SMART_PRE_RENDER and SMART_RENDER.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "host/layer_frame.h"
#include "host/parameter_store.h"
#include "hostapi/smart_render.h"

namespace host {

class EffectState;

// A layer that the effect asked for in the pre-render.
struct LayerRequest {
  Moment moment;
  PF_LRect part{};                     // of the layer, as promised in the pre-render
  bool empty = false;                  // a layer parameter set to none: no pixels will come
  std::unique_ptr<LayerFrame> pixels;  // from check-out to check-in
  bool taken = false;                  // only once
};

class SmartFrame {
 public:
  explicit SmartFrame(EffectState& itsEffect) : effect(itsEffect) {}
  ~SmartFrame();  // disposes of the pre-render data
  SmartFrame(const SmartFrame&) = delete;
  SmartFrame& operator=(const SmartFrame&) = delete;

  EffectState& effect;
  Depth depth = Depth::bits8;
  Margins margins;
  std::map<std::int32_t, LayerRequest> layers;  // by check-out id
  std::vector<std::byte> mixedIn;
  PF_PreRenderOutput output{};
  PF_EffectWorld* target = nullptr;  // the world to render into
  bool inputTaken = false;
};

// Through the function that the effect gave; else as a handle; else as memory of the C library.
void disposePreRenderData(EffectState& effect, PF_PreRenderOutput& output) noexcept;

}  // namespace host
