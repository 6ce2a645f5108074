// host/layer_frame.h — frames of the layer on loan to the effect.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "host/frame_source.h"
#include "host/frame_view.h"
#include "host/window_world.h"

namespace host {

class HostState;

// A frame in the shape that the effect is to see it in.
struct LayerFrame {
  Image image;
  std::optional<WindowWorld> window;  // under stress; otherwise the image itself is shown
  PF_EffectWorld world{};
};

// Reads frames into buffers that are used again. [any thread]
class FramePool {
 public:
  // Outside the layer's duration: transparent. Throws what the source throws.
  std::unique_ptr<LayerFrame> read(HostState& host, FrameSource& source, std::int32_t frame,
                                   Depth depth, const FrameView& view = {});
  // Reports when the effect wrote where it may only read.
  void giveBack(HostState& host, std::unique_ptr<LayerFrame> frame);

 private:
  Image takeImage(const HostState& host, const LayerInfo& info, Depth depth);

  std::mutex mutex_;
  std::vector<Image> spare_;
};

}  // namespace host
