// media/plain/clip_reader.cpp — footage in without FFmpeg: YUV4MPEG2 clips and portable pixmaps.
#include "media/clip_reader.h"

#include <algorithm>

#include "media/input_path.h"
#include "media/plain/plain_input.h"

namespace media {
namespace {

std::unique_ptr<PlainInput> openInput(const std::string& path, const ReadOptions& options) {
  if (options.frameRate && (options.frameRate->num < 1 || options.frameRate->den < 1)) {
    throw Error(Problem::badOption, "A frame rate must be above 0.");
  }
  const InputPath input = resolveInput(path, options.startNumber);
  if (input.glob) {
    throw Error(Problem::badOption, path + ": name numbered pictures as in shot.%05d.ppm.");
  }
  return input.sequence ? openPnm(input, options) : openY4m(input.url, options);
}

}  // namespace

void describeFrame(ClipInfo& info, const PlainFormat& format, int width, int height) {
  info.width = width;
  info.height = height;
  info.pixelFormat = format.name;
  info.bitsPerComponent = format.depth;
  info.hasAlpha = format.alpha;
  info.workingDepth = format.layout().workingDepth();
}

class ClipReader::Impl {
 public:
  Impl(const std::string& path, ReadOptions options)
      : options_(options), input_(openInput(path, options)), info_(input_->info()) {
    info_.path = path;
    info_.timeBase = {info_.frameRate.den, info_.frameRate.num};
    info_.durationSeconds = static_cast<double>(info_.frameCount) / info_.frameRate.value();
    warnings_ = input_->warnings();
  }

  const ClipInfo& info() const noexcept { return info_; }
  const ReadOptions& options() const noexcept { return options_; }
  std::int64_t position() const noexcept { return position_; }
  const std::vector<std::string>& warnings() const noexcept { return warnings_; }

  std::optional<Picture> next() {
    if (position_ >= info_.frameCount) return std::nullopt;
    return frameAt(position_);
  }

  void seek(std::int64_t index) {
    if (index < 0 || index > info_.frameCount) {
      throw Error(Problem::badOption, "There is no frame " + std::to_string(index) +
                                          "; the clip's frames are 0 to " +
                                          std::to_string(info_.frameCount - 1) + ".");
    }
    position_ = index;
  }

  // A frame that cannot be read is replaced by the nearest before it that can, or after it.
  Picture frameAt(std::int64_t index) {
    seek(index == info_.frameCount ? index + 1 : index);
    std::shared_ptr<PlainFrame> frame;
    try {
      frame = input_->read(index);
    } catch (const Error& error) {
      note(error.what());
      frame = neighbour(index);
      if (!frame) throw;
      return made(std::move(frame), index, true);
    }
    return made(std::move(frame), index, false);
  }

 private:
  Picture made(std::shared_ptr<PlainFrame> frame, std::int64_t index, bool substitute) {
    frame->pts = index;
    position_ = index + 1;
    return Picture(std::move(frame), index, substitute);
  }

  std::shared_ptr<PlainFrame> neighbour(std::int64_t index) {
    for (std::int64_t away = 1; away < info_.frameCount; ++away) {
      for (const std::int64_t other : {index - away, index + away}) {
        if (other < 0 || other >= info_.frameCount) continue;
        try {
          return input_->read(other);
        } catch (const Error& error) {
          note(error.what());
        }
      }
    }
    return nullptr;
  }

  void note(const std::string& what) {
    const std::string text = what + " A neighbour stands in.";
    if (std::ranges::find(warnings_, text) == warnings_.end()) warnings_.push_back(text);
  }

  ReadOptions options_;
  std::unique_ptr<PlainInput> input_;
  ClipInfo info_;
  std::int64_t position_ = 0;
  std::vector<std::string> warnings_;
};

ClipReader::ClipReader(const std::string& path, ReadOptions options)
    : impl_(std::make_unique<Impl>(path, options)) {}
ClipReader::~ClipReader() = default;
ClipReader::ClipReader(ClipReader&&) noexcept = default;
ClipReader& ClipReader::operator=(ClipReader&&) noexcept = default;

const ClipInfo& ClipReader::info() const noexcept {
  return impl_->info();
}
const ReadOptions& ClipReader::options() const noexcept {
  return impl_->options();
}
std::optional<Picture> ClipReader::next() {
  return impl_->next();
}
std::int64_t ClipReader::position() const noexcept {
  return impl_->position();
}
void ClipReader::seek(std::int64_t index) {
  impl_->seek(index);
}
Picture ClipReader::frameAt(std::int64_t index) {
  return impl_->frameAt(index);
}
std::int64_t ClipReader::ptsOf(std::int64_t index) const {
  return std::clamp<std::int64_t>(index, 0, impl_->info().frameCount);
}
const std::vector<std::string>& ClipReader::warnings() const noexcept {
  return impl_->warnings();
}

}  // namespace media
