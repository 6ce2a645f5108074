// cli/clip_source.cpp — a clip as the layer that the effect is applied to.
#include "cli/clip_source.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

#include "cli/error.h"
#include "media/pixel_conversion.h"

namespace cli {
namespace {

// The effect counts frames; their rate only has to keep frame x step within 32 bits.
void setTimes(host::LayerInfo& layer, const media::Rational& rate) {
  constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
  const bool usable =
      rate.num > 0 && rate.den > 0 && std::int64_t{layer.frameCount} * rate.den + rate.den < kMost;
  layer.timeStep = usable ? rate.den : 1;
  layer.timeScale = usable ? static_cast<std::uint32_t>(rate.num) : 25U;
}

host::LayerInfo layerOf(const media::ClipInfo& clip) {
  // The effect keeps 176 bytes a frame in one block with a 32-bit size.
  constexpr std::int64_t kMostFrames = 24'403'223;
  if (clip.frameCount > kMostFrames) {
    throw Failure(fmt::format("{} has {} frames, more than the {} that can be analysed; cut it.",
                              clip.path, clip.frameCount, kMostFrames));
  }
  host::LayerInfo layer;
  layer.width = clip.width;
  layer.height = clip.height;
  layer.frameCount = static_cast<std::int32_t>(clip.frameCount);
  setTimes(layer, clip.frameRate);
  layer.pixelAspectNum = std::max(1, clip.sampleAspectRatio.num);
  layer.pixelAspectDen = static_cast<std::uint32_t>(std::max(1, clip.sampleAspectRatio.den));
  // Analysed in 8 bits whatever the footage: statistics have 256 levels in any case, and a deep
  // pixel at or above white would be counted as black.
  layer.depth = host::Depth::bits8;
  return layer;
}

}  // namespace

media::ArgbView viewOf(host::Image& image) {
  media::ArgbView view;
  view.data = image.row(0);
  view.rowBytes = image.rowBytes();
  view.width = image.width();
  view.height = image.height();
  view.depth = image.depth() == host::Depth::bits8    ? media::Depth::eight
               : image.depth() == host::Depth::bits16 ? media::Depth::sixteen
                                                      : media::Depth::floating;
  return view;
}

media::ConstArgbView viewOf(const host::Image& image) {
  const media::ArgbView view = viewOf(const_cast<host::Image&>(image));
  return view;
}

ClipSource::ClipSource(const ClipOptions& clip, int threads)
    : reader_(clip.path, clip.read), layer_(layerOf(reader_.info())), pool_(threads) {}

ClipSource::~ClipSource() = default;

void ClipSource::endReading() {
  const std::lock_guard lock(readMutex_);
  queue_.reset();
  latest_.reset();
}

void ClipSource::lend(std::int64_t frame, const media::Picture& picture, const LevelArea& area) {
  const std::lock_guard lock(lentMutex_);
  lent_[frame] = Lent{picture, area, {}};
}

std::optional<double> ClipSource::takeBack(std::int64_t frame) {
  const std::lock_guard lock(lentMutex_);
  const auto found = lent_.find(frame);
  if (found == lent_.end()) return {};
  const std::optional<double> level = found->second.level;
  lent_.erase(found);
  return level;
}

media::Picture ClipSource::sequential(std::int64_t frame) {
  if (latest_ && latest_->index() == frame) return *latest_;
  if (!queue_ || (latest_ && latest_->index() > frame)) {
    queue_.reset();
    queue_ = std::make_unique<PictureQueue>(reader_, frame, layer_.frameCount - 1);
  }
  do {
    latest_ = queue_->pop();
    if (!latest_) {
      queue_.reset();
      throw ClipBreaksOff(reader_.position());
    }
  } while (latest_->index() < frame);
  return *latest_;
}

void ClipSource::read(std::int32_t frame, host::Image& image) {
  const media::ArgbView view = viewOf(image);
  media::Picture picture;
  LevelArea area;
  {
    const std::lock_guard lock(lentMutex_);
    const auto found = lent_.find(frame);
    if (found != lent_.end()) {
      picture = found->second.picture;
      area = found->second.area;
    }
  }
  if (picture) {
    media::toArgb(picture, view);
    const double level = frameLevel(view, area);
    const std::lock_guard lock(lentMutex_);
    if (const auto found = lent_.find(frame); found != lent_.end()) found->second.level = level;
    return;
  }
  const std::lock_guard lock(readMutex_);
  media::toArgb(sequential(frame), view,
                [this](int jobs, const std::function<void(int)>& job) { pool_.run(jobs, job); });
}

}  // namespace cli
