// validate/test_layer.h — the footage that checks render: made up, the same for the same seed.
#pragma once

#include <cstdint>

#include "host/frame_source.h"

namespace validate {

struct LayerShape {
  std::int32_t width = 32;
  std::int32_t height = 24;
  std::int32_t frames = 4;
  host::Depth depth = host::Depth::bits8;
};

// A ramp whose brightness changes from frame to frame, with grain; alpha falls towards one corner.
class TestLayer : public host::FrameSource {
 public:
  TestLayer(const LayerShape& shape, std::uint64_t seed);

  const host::LayerInfo& info() const override { return info_; }
  void read(std::int32_t frame, host::Image& image) override;

 private:
  host::LayerInfo info_;
  std::uint64_t seed_;
};

}  // namespace validate
