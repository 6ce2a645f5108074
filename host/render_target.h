// host/render_target.h — the world that an effect renders into.
#pragma once

#include <optional>

#include "host/host.h"
#include "host/window_world.h"
#include "hostapi/geometry.h"

namespace host {

// The effect's result covers a part of the layer, usually all of it, and may reach beyond. Without
// stress the world of a whole layer is the output image itself; otherwise a window of its own, what
// lies within the layer copied out at the end.
class RenderTarget {
 public:
  // result: in layer coordinates, not empty; output has the size that is rendered. region: what of
  // the output this render stands for.
  RenderTarget(HostState& host, Image& output, const PF_LRect& result, Depth depth,
               const Margins& margins, const PF_LRect& region);

  PF_EffectWorld& world() noexcept { return world_; }
  // Reports writes outside the picture; what of the region the result does not cover becomes
  // transparent.
  void finish(HostState& host);

 private:
  Image& output_;
  PF_LRect result_;
  PF_LRect region_;
  std::optional<WindowWorld> window_;
  PF_EffectWorld world_{};
};

// Room that Stress.originX and originY ask for around the picture.
Margins stressMargins(const Stress& stress) noexcept;

void clear(Image& image) noexcept;
// A part of it, within its bounds.
void clear(Image& image, const PF_LRect& part) noexcept;

}  // namespace host
