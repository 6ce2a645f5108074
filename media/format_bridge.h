// media/format_bridge.h — frames brought to another pixel format or size by libswscale.
#pragma once

#include "media/av_handles.h"

namespace media {

/// Converts frames to one format and size, colour range and matrix respected and kept. Costs
/// nothing for frames that fit already. Not thread-safe.
class FormatBridge {
 public:
  FormatBridge() = default;
  /// Throws Error{unsupported} on use if libswscale cannot write `format`.
  FormatBridge(AVPixelFormat format, int width, int height)
      : format_(format), width_(width), height_(height) {}

  bool fits(const AVFrame& frame) const noexcept;

  /// A new reference to `frame` if it fits, else a converted copy with the same properties.
  FrameHandle convert(const AVFrame& frame);

 private:
  AVPixelFormat format_ = AV_PIX_FMT_NONE;
  int width_ = 0;
  int height_ = 0;
  ScalerHandle scaler_;
};

}  // namespace media
