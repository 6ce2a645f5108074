// cli/shot_layer.cpp — a shot of the clip as the layer that an instance is applied to.
#include "cli/shot_layer.h"

namespace cli {

ShotLayer::ShotLayer(ClipSource& clip, ShotFrames frames)
    : clip_(clip), frames_(std::move(frames)), info_(clip.info()) {
  info_.frameCount = frames_.pictureCount();
}

void ShotLayer::read(std::int32_t picture, host::Image& image) {
  clip_.read(static_cast<std::int32_t>(frames_.frameOf(picture)), image);
  if (observer_) observer_(picture, image);
}

}  // namespace cli
