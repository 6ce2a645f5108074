// media/picture.h — one decoded frame, shared and never changed once made.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "media/clip_info.h"
#include "media/frame_type.h"

namespace media {

/// A reference-counted frame in its file's own pixel format. Copies are cheap and share pixels;
/// any thread may read one. A default-made Picture is empty and good only for assigning to.
class Picture {
 public:
  Picture() = default;

  /// Takes over `frame`, whose pixels nobody changes from now on.
  Picture(std::shared_ptr<const Frame> frame, std::int64_t index, bool substitute = false)
      : frame_(std::move(frame)), index_(index), substitute_(substitute) {}

  /// A black picture (alpha opaque) of `info`'s size, pixel format and colour properties, to serve
  /// as the `like` of fromArgb() where there is no source. pts is `index` frames of
  /// info.frameRate after info.startPts. Throws Error{unsupported} for unknown pixel formats.
  static Picture blank(const ClipInfo& info, std::int64_t index = 0);

  explicit operator bool() const noexcept { return frame_ != nullptr; }
  int width() const noexcept;
  int height() const noexcept;
  std::string pixelFormat() const;
  std::int64_t pts() const noexcept;       ///< in ClipInfo::timeBase ticks; rises with index
  std::int64_t duration() const noexcept;  ///< in the same ticks, at least 1
  std::int64_t index() const noexcept { return index_; }  ///< from 0, in presentation order
  /// True if this frame could not be decoded and stands in with its neighbour's pixels.
  bool isSubstitute() const noexcept { return substitute_; }

  const Frame* frame() const noexcept { return frame_.get(); }

  /// Bytes of pixel memory that this picture keeps alive.
  std::size_t bytes() const noexcept;

  /// The ARGB depth that loses least: 8-bit formats eight, 9 to 16 sixteen, float floating.
  Depth workingDepth() const noexcept;

 private:
  std::shared_ptr<const Frame> frame_;
  std::int64_t index_ = 0;
  bool substitute_ = false;
};

}  // namespace media
