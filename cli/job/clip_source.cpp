// cli/job/clip_source.cpp — a clip as the layer that the effect is applied to.
#include "cli/job/clip_source.h"

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

ClipSource::ClipSource(const ClipOptions& clip, int threads, std::uint64_t memory)
    : reader_(clip.path, clip.read),
      layer_(layerOf(reader_.info())),
      cache_(memory),
      pool_(threads) {}

ClipSource::~ClipSource() = default;

void ClipSource::endReading() {
  const std::lock_guard lock(readMutex_);
  queue_.reset();
  latest_.reset();
}

media::Picture ClipSource::decode(std::int64_t frame) {
  // A frame shortly ahead is soonest reached by reading on.
  const bool reachable = queue_ && frame >= nextInQueue_ &&
                         frame - nextInQueue_ < static_cast<std::int64_t>(PictureQueue::kAhead);
  if (!reachable) {
    queue_.reset();
    queue_ = std::make_unique<PictureQueue>(reader_, frame, layer_.frameCount - 1);
    nextInQueue_ = frame;
  }
  while (true) {
    std::optional<media::Picture> picture = queue_->pop();
    if (!picture) {
      queue_.reset();
      throw ClipBreaksOff(reader_.position());
    }
    nextInQueue_ = picture->index() + 1;
    cache_.offer(*picture);
    if (picture->index() >= frame) return *picture;
  }
}

media::Picture ClipSource::picture(std::int64_t frame) {
  if (const auto found = cache_.find(frame)) return *found;
  const std::lock_guard lock(readMutex_);
  if (const auto found = cache_.find(frame)) return *found;  // decoded while waiting
  if (!latest_ || latest_->index() != frame) latest_ = decode(frame);
  return *latest_;
}

ClipSource::Lent* ClipSource::lentFor(std::int64_t frame) {
  const std::lock_guard lock(lentMutex_);
  const auto found = lent_.find({std::this_thread::get_id(), frame});
  return found == lent_.end() ? nullptr : &found->second;
}

void ClipSource::read(std::int32_t frame, host::Image& image) {
  const media::ArgbView view = viewOf(image);
  if (Lent* const lent = lentFor(frame)) {
    LevelMeter meter(view, lent->area);
    media::toArgb(lent->picture, view, {}, [&meter](int y) { meter.add(y); });
    lent->level = meter.level();
    return;
  }
  media::toArgb(picture(frame), view,
                [this](int jobs, const std::function<void(int)>& job) { pool_.run(jobs, job); });
}

PictureLoan::PictureLoan(ClipSource& source, std::int64_t frame, const media::Picture& picture,
                         const LevelArea& area)
    : source_(source), key_(std::this_thread::get_id(), frame) {
  const std::lock_guard lock(source_.lentMutex_);
  source_.lent_.insert_or_assign(key_, ClipSource::Lent{picture, area, {}});
}

PictureLoan::~PictureLoan() {
  const std::lock_guard lock(source_.lentMutex_);
  source_.lent_.erase(key_);
}

std::optional<double> PictureLoan::level() const {
  const std::lock_guard lock(source_.lentMutex_);
  return source_.lent_.at(key_).level;
}

}  // namespace cli
