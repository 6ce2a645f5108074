// cli/shots/shot_layer.cpp — a shot of the clip as the layer that an instance is applied to.
#include "cli/shots/shot_layer.h"

namespace cli {

ShotLayer::ShotLayer(ClipSource& clip, ShotFrames frames)
    : clip_(clip), frames_(std::move(frames)), info_(clip.info()) {
  info_.frameCount = frames_.pictureCount();
}

void ShotLayer::read(std::int32_t picture, host::Image& image) {
  showUpTo(picture);
  clip_.read(static_cast<std::int32_t>(frames_.frameOf(picture)), image);
  if (!observer_ || picture != next_) return;
  observer_(picture, image);
  ++next_;
}

void ShotLayer::observe(Observer observer) {
  observer_ = std::move(observer);
  next_ = 0;
}

void ShotLayer::endObserving() {
  showUpTo(info_.frameCount);
  observer_ = {};
}

void ShotLayer::showUpTo(std::int32_t end) {
  if (!observer_ || next_ >= end) return;
  host::Image image(info_.width, info_.height, host::Depth::bits8);
  for (; next_ < end; ++next_) {
    clip_.read(static_cast<std::int32_t>(frames_.frameOf(next_)), image);
    observer_(next_, image);
  }
}

}  // namespace cli
