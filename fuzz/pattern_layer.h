// fuzz/pattern_layer.h — footage that costs nothing: a ramp that flickers.
#pragma once

#include <cstdint>

#include "host/frame_source.h"

namespace fuzz {

class PatternLayer final : public host::FrameSource {
 public:
  PatternLayer(std::int32_t width, std::int32_t height, std::int32_t frames, host::Depth depth);

  const host::LayerInfo& info() const override { return info_; }
  void read(std::int32_t frame, host::Image& image) override;

 private:
  host::LayerInfo info_;
};

}  // namespace fuzz
