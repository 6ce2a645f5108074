// cli/render_pipeline.h — frames through the effect: several at once, written in order.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "cli/clip_source.h"
#include "cli/frame_level.h"
#include "host/instance.h"
#include "media/picture.h"

namespace cli {

struct RenderPlan {
  std::int64_t first = 0;
  std::int64_t last = 0;  ///< included
  host::Depth depth = host::Depth::bits8;
  host::RenderPath path = host::RenderPath::smart;
  int workers = 1;
  /// One entry a frame of the layer; true: written as it is, without asking the effect.
  std::vector<bool> leaveAlone;
  LevelArea area;  ///< where brightness is measured
};

/// One frame's outcome.
struct RenderedFrame {
  std::int64_t frame = 0;
  media::Picture picture;  ///< the original itself when the effect changed nothing
  bool untouched = false;
  double inputLevel = 0.0;  ///< over the plan's area, 0..255
  double outputLevel = 0.0;
};

/// Decodes, renders on the plan's number of threads and hands the frames over in order, on the
/// calling thread; at most 2 x workers + 2 frames are held. What comes out does not depend on the
/// number of workers. Ends early where the clip breaks off; returns the frames handed over. Throws
/// Interrupted, and whatever decoding, the effect or `take` throw.
std::int64_t renderFrames(host::Instance& instance, ClipSource& source, const RenderPlan& plan,
                          const std::function<void(RenderedFrame&)>& take);

}  // namespace cli
