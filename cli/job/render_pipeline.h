// cli/job/render_pipeline.h — frames through the effect: several at once, written in order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "cli/job/clip_source.h"
#include "cli/job/frame_level.h"
#include "host/instance.h"
#include "media/picture.h"

namespace cli {

/// An instance of the effect that renders some of the frames, and on which path.
struct RenderPart {
  host::Instance* instance = nullptr;
  host::RenderPath path = host::RenderPath::smart;
};

/// How one frame of the clip is made.
struct FrameRoute {
  std::optional<std::size_t> part{};  ///< of RenderPlan::parts; none: written as it is
  std::int32_t layerFrame = 0;        ///< what the part's instance is asked to render
  /// The frame that the instance's layer reads from the ClipSource meanwhile, and for which it gets
  /// this frame's picture; unset: the frame itself.
  std::optional<std::int64_t> readAs{};
  LevelArea area{};  ///< where brightness is measured
};

struct RenderPlan {
  std::int64_t first = 0;
  std::int64_t last = 0;  ///< included
  host::Depth depth = host::Depth::bits8;
  int workers = 1;
  std::vector<RenderPart> parts;
  /// Asked once a frame, in rising order, on the calling thread.
  std::function<FrameRoute(std::int64_t frame)> route;
};

/// One frame's outcome.
struct RenderedFrame {
  std::int64_t frame = 0;
  media::Picture original;
  media::Picture picture;   ///< the original itself when untouched
  bool untouched = false;   ///< the effect changed nothing, nor would the way through RGB
  double inputLevel = 0.0;  ///< over the route's area, 0..255
  double outputLevel = 0.0;
};

/// Decodes, renders on the plan's number of threads and hands the frames over in order, on the
/// calling thread; at most 2 x workers + 2 frames are held. What comes out does not depend on the
/// number of workers. An instance gets its render copies when its first frame comes up, and they go
/// once its frames are through. Ends early where the clip breaks off; returns the frames handed
/// over. Throws Interrupted, and whatever decoding, the effect or `take` throw.
std::int64_t renderFrames(ClipSource& source, const RenderPlan& plan,
                          const std::function<void(RenderedFrame&)>& take);

}  // namespace cli
