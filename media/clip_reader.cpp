// media/clip_reader.cpp — footage in: clips and numbered pictures, frame by frame or by index.
#include "media/clip_reader.h"

#include <algorithm>
#include <string>

#include "media/av_handles.h"
#include "media/format_bridge.h"
#include "media/format_layout.h"
#include "media/frame_index.h"
#include "media/frame_shape.h"
#include "media/input_file.h"
#include "media/input_path.h"
#include "media/log_capture.h"
#include "media/stream_info.h"
#include "media/video_decoder.h"

namespace media {
namespace {

const ReadOptions& checked(const ReadOptions& options) {
  captureLibraryLog();
  if (options.frameRate && (options.frameRate->num < 1 || options.frameRate->den < 1)) {
    throw Error(Problem::badOption, "A frame rate must be above 0.");
  }
  return options;
}

}  // namespace

class ClipReader::Impl {
 public:
  Impl(const std::string& path, ReadOptions options)
      : options_(std::move(options)),
        input_(resolveInput(path, checked(options_).startNumber), options_),
        decoder_((buildIndex(path), input_), options_.threads) {
    readFirst(path);
    describe(path);
    tellDamage();
  }

  const ClipInfo& info() const noexcept { return info_; }
  const ReadOptions& options() const noexcept { return options_; }
  std::int64_t position() const noexcept { return position_; }
  const std::vector<std::string>& warnings() const noexcept { return warnings_; }

  std::optional<Picture> next() {
    if (position_ >= info_.frameCount) return std::nullopt;
    std::optional<Picture> picture = fetch(position_);
    if (!picture) {
      breakOff(position_);
      return std::nullopt;
    }
    ++position_;
    return picture;
  }

  void seek(std::int64_t index) {
    if (index < 0 || index > info_.frameCount) {
      throw Error(Problem::badOption, "There is no frame " + std::to_string(index) +
                                          "; the clip's frames are 0 to " +
                                          std::to_string(info_.frameCount - 1) + ".");
    }
    position_ = index;
  }

  Picture frameAt(std::int64_t index) {
    const std::int64_t asked = index;
    if (index < 0 || index >= indexedFrames_) seek(index < 0 ? index : info_.frameCount + 1);
    index = std::min(index, info_.frameCount - 1);
    position_ = index;
    std::optional<Picture> picture = next();
    while (!picture && info_.frameCount > 0) {  // the file breaks off before this frame
      position_ = info_.frameCount - 1;
      picture = next();
    }
    if (!picture) throw Error(Problem::damaged, info_.path + " can no longer be decoded.");
    if (picture->index() == asked) return *picture;
    return Picture(shareFrame(*picture->frame()), asked, true);
  }

  std::int64_t ptsOf(std::int64_t index) const {
    return index >= index_.size() ? index_.endPts()
                                  : index_.at(std::max<std::int64_t>(0, index)).pts;
  }

 private:
  // A decoded frame and the index it belongs to.
  struct Decoded {
    FrameHandle frame;
    std::int64_t index = -1;
  };

  void buildIndex(const std::string& path) {
    index_ = FrameIndex::build(input_, options_);
    if (index_.size() == 0) {
      throw Error(Problem::empty, path + " has a video stream without frames.");
    }
  }

  void readFirst(const std::string& path) {
    indexedFrames_ = index_.size();
    Decoded first = decode();
    if (!first.frame) {
      throw Error(Problem::notVideo,
                  "No frame of " + path + " can be decoded; the file is damaged.");
    }
    const std::int64_t lost = index_.timed() ? first.index : 0;
    if (lost > 0) {
      index_.dropBefore(lost);
      first.index = 0;
      indexedFrames_ = index_.size();
      lostAtStart_ = lost;
    }
    AVFrame& frame = *first.frame;
    format_ = withoutJpegName(static_cast<AVPixelFormat>(frame.format));
    bridge_ = FormatBridge(formatWithLayout(format_), frame.width, frame.height);
    finishFrame(first);
    ahead_ = std::move(first);
  }

  void describe(const std::string& path) {
    info_ = describeStream(input_, index_, *ahead_.frame);
    info_.path = path;
    info_.frameCount = index_.size();
    info_.frameCountExact = index_.exact();
    if (!input_.path().sequence) {
      missingFrames_ = index_.missingFrames(input_.context(), input_.stream());
    }
    if (format_ != static_cast<AVPixelFormat>(ahead_.frame->format)) {
      notes_.push_back("Pictures in the format " + pixelFormatName(format_) +
                       " are handed out as " + info_.pixelFormat + ".");
    }
  }

  Decoded decode() {
    Decoded decoded;
    decoded.frame = decoder_.next();
    if (!decoded.frame) return decoded;
    if (!index_.timed()) {
      decoded.index = decodedCount_++;
    } else if (decoded.frame->pts != AV_NOPTS_VALUE) {
      decoded.index = index_.indexAt(decoded.frame->pts).value_or(-1);
    } else {
      decoded.index = reached_ + 1;
    }
    return decoded;
  }

  // Gives a decoded frame the clip's format and its own times.
  void finishFrame(Decoded& decoded) {
    AVFrame& frame = *decoded.frame;
    const auto format = static_cast<AVPixelFormat>(frame.format);
    if (withoutJpegName(format) != format) {
      frame.format = withoutJpegName(format);
      frame.color_range = AVCOL_RANGE_JPEG;
    }
    if (!bridge_.fits(frame)) {
      const bool otherShape = static_cast<AVPixelFormat>(frame.format) != format_ ||
                              frame.width != info_.width || frame.height != info_.height;
      if (otherShape && info_.width > 0 && !changesShape_) {
        changesShape_ = true;
        tellDamage();
      }
      decoded.frame = bridge_.convert(frame);
    }
    AVFrame& result = *decoded.frame;
    const FrameIndex::Entry& entry = index_.at(decoded.index);
    result.pts = entry.pts;
    result.pkt_dts = AV_NOPTS_VALUE;
    result.pkt_duration = entry.duration;
    result.pict_type = AV_PICTURE_TYPE_NONE;
    if (result.decode_error_flags != 0 || (result.flags & AV_FRAME_FLAG_CORRUPT) != 0) {
      if (damagedFrames_++ == 0) firstDamaged_ = decoded.index;
      tellDamage();
    }
  }

  // The picture `index`, or a neighbour in its place; nothing if the file breaks off before it.
  std::optional<Picture> fetch(std::int64_t index) {
    if (mustSeek(index)) jump(index);
    for (;;) {
      if (!ahead_.frame) {
        ahead_ = decode();
        if (!ahead_.frame) {
          if (retryEarlier(index)) continue;
          return std::nullopt;
        }
        if (ahead_.index < index) {
          reached_ = std::max(reached_, ahead_.index);
          if (ahead_.index + 1 >= index && ahead_.index >= 0 && ahead_.index < index_.size()) {
            finishFrame(ahead_);
            last_ = std::move(ahead_);
          }
          ahead_ = {};
          continue;
        }
        if (ahead_.index > index && !last_.frame && retryEarlier(index)) continue;
        if (ahead_.index >= index_.size()) return std::nullopt;
        finishFrame(ahead_);
      }
      if (ahead_.index < index) {
        last_ = std::move(ahead_);
        ahead_ = {};
        continue;
      }
      seekedFor_ = -1;
      if (ahead_.index == index) {
        reached_ = index;
        last_ = std::move(ahead_);
        ahead_ = {};
        return Picture(shareFrame(*last_.frame), index);
      }
      return substitute(index);
    }
  }

  Picture substitute(std::int64_t index) {
    const AVFrame& neighbour = last_.frame ? *last_.frame : *ahead_.frame;
    const std::shared_ptr<AVFrame> frame = shareFrame(neighbour);
    frame->pts = index_.at(index).pts;
    frame->pkt_duration = index_.at(index).duration;
    reached_ = index;
    if (lostFrames_++ == 0) firstLost_ = index;
    tellDamage();
    return Picture(frame, index, true);
  }

  // Decoding on is right when the frame lies ahead and no key frame lies between.
  bool mustSeek(std::int64_t index) const {
    if (ahead_.frame && ahead_.index == index) return false;
    if (index <= reached_) return true;
    if (ahead_.frame && ahead_.index > index) return !last_.frame || last_.index != index - 1;
    if (!index_.timed() || index == reached_ + 1) return false;
    const std::int64_t key = index_.keyFor(index);
    const std::int64_t current = reached_ < 0 ? 0 : reached_;
    return key >= 0 &&
           index_.keyFrames()[static_cast<std::size_t>(key)].order > index_.at(current).order + 1;
  }

  void jump(std::int64_t index) {
    seekedFor_ = index;
    nextKey_ = index_.timed() ? index_.keyFor(index) : -1;
    if (!retryEarlier(index)) throw Error(Problem::damaged, info_.path + " cannot be rewound.");
  }

  // Moves the input to the next earlier place from which `index` may be decoded; false if all were
  // tried.
  bool retryEarlier(std::int64_t index) {
    if (seekedFor_ != index || nextKey_ < -1) return false;
    bool moved = false;
    while (nextKey_ >= 0 && !moved) {
      const auto& key = index_.keyFrames()[static_cast<std::size_t>(nextKey_--)];
      moved = input_.seek(key.dts);
    }
    if (!moved) {
      nextKey_ = -2;
      input_.reopen();
    }
    decoder_.restart();
    decodedCount_ = 0;
    ahead_ = {};
    last_ = {};
    reached_ = -1;
    return true;
  }

  void breakOff(std::int64_t index) {
    info_.frameCount = index;
    tellDamage();
  }

  void tellDamage() {
    warnings_ = input_.path().warnings;
    warnings_.insert(warnings_.end(), notes_.begin(), notes_.end());
    const auto add = [this](std::string text) { warnings_.push_back(std::move(text)); };
    const std::int64_t missing = missingFrames_ + indexedFrames_ - info_.frameCount;
    if (info_.frameCount > 0 && missing > 0) {
      add("The file is truncated after frame " + std::to_string(info_.frameCount - 1) + " (about " +
          std::to_string(missing) + " more should follow); what is there is used.");
    }
    if (lostAtStart_ > 0) {
      add(std::to_string(lostAtStart_) +
          " frames at the start cannot be decoded and are left out.");
    }
    if (lostFrames_ > 0) {
      add(std::to_string(lostFrames_) + " frames cannot be decoded (the first is frame " +
          std::to_string(firstLost_) + "); a neighbour stands in.");
    }
    if (damagedFrames_ > 0) {
      add(std::to_string(damagedFrames_) + " frames are damaged (the first is frame " +
          std::to_string(firstDamaged_) + ").");
    }
    if (changesShape_)
      add("The picture changes size or format on the way; it is kept as it began.");
  }

  ReadOptions options_;
  InputFile input_;
  FrameIndex index_;
  VideoDecoder decoder_;
  ClipInfo info_;
  FormatBridge bridge_;
  AVPixelFormat format_ = AV_PIX_FMT_NONE;

  Decoded ahead_;  // decoded, not handed out yet
  Decoded last_;   // the last one handed out or passed over
  std::int64_t position_ = 0;
  std::int64_t reached_ = -1;      // the last index that decoding has passed
  std::int64_t decodedCount_ = 0;  // since the start, for clips without times
  std::int64_t seekedFor_ = -1;
  std::int64_t nextKey_ = -2;  // key frame to try next; -1: the file's start; -2: none left

  std::int64_t indexedFrames_ = 0;
  std::int64_t missingFrames_ = 0;  // that the container promises beyond the index
  std::int64_t lostAtStart_ = 0;
  std::int64_t lostFrames_ = 0;
  std::int64_t firstLost_ = 0;
  std::int64_t damagedFrames_ = 0;
  std::int64_t firstDamaged_ = 0;
  bool changesShape_ = false;
  std::vector<std::string> notes_;
  std::vector<std::string> warnings_;
};

ClipReader::ClipReader(const std::string& path, ReadOptions options)
    : impl_(std::make_unique<Impl>(path, std::move(options))) {}
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
  return impl_->ptsOf(index);
}
const std::vector<std::string>& ClipReader::warnings() const noexcept {
  return impl_->warnings();
}

}  // namespace media
