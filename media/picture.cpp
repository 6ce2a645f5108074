// media/picture.cpp — one decoded frame, shared and never changed once made.
#include "media/picture.h"

#include <algorithm>
#include <vector>

#include "media/av_handles.h"
#include "media/colour_names.h"
#include "media/component_rows.h"
#include "media/error.h"
#include "media/format_layout.h"
#include "media/frame_shape.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace media {
namespace {

void fillBlack(AVFrame& frame, const PixelLayout& layout) {
  const bool limited =
      layout.family == PixelLayout::Family::yuv && frame.color_range != AVCOL_RANGE_JPEG;
  for (int y = 0; y < frame.height; ++y) {
    for (std::size_t i = 0; i < 4; ++i) {
      const ComponentLayout& c = layout.components[i];
      const bool used = i == 3 ? layout.hasAlpha : static_cast<int>(i) < layout.colours;
      const bool chroma = layout.family == PixelLayout::Family::yuv && (i == 1 || i == 2);
      if (!used || (chroma && (y & ((1 << layout.chromaHeightShift) - 1)) != 0)) continue;
      const float unit = c.depth == 32 ? 1.0F : static_cast<float>(c.maximum());
      const float middle = c.depth == 32 ? 0.0F : static_cast<float>(1U << (c.depth - 1));
      const float bottom = limited && c.depth < 32 ? middle / 8 : 0.0F;
      const float value = i == 3 ? unit : chroma ? middle : bottom;
      const int width = chroma ? ceilShift(frame.width, layout.chromaWidthShift) : frame.width;
      const int row = chroma ? y >> layout.chromaHeightShift : y;
      const std::vector<float> values(static_cast<std::size_t>(width), value);
      storeRow(values.data(), c, width,
               frame.data[c.plane] + std::ptrdiff_t{row} * frame.linesize[c.plane]);
    }
  }
}

}  // namespace

Picture Picture::blank(const ClipInfo& info, std::int64_t index) {
  const AVPixelFormat format = av_get_pix_fmt(info.pixelFormat.c_str());
  if (format == AV_PIX_FMT_NONE || !hasPixelLayout(format)) {
    throw Error(Problem::unsupported, "The pixel format " + info.pixelFormat +
                                          " is not one that can be worked on; yuv420p, "
                                          "yuv422p10le and rgb24 are.");
  }
  if (info.width < 1 || info.height < 1) {
    throw Error(Problem::unsupported, "A picture needs a width and a height of at least 1.");
  }
  const FrameHandle frame = makeBlankFrame(format, info.width, info.height);
  setColour(*frame, info);
  frame->sample_aspect_ratio = {info.sampleAspectRatio.num, info.sampleAspectRatio.den};
  const AVRational perFrame{info.frameRate.den, info.frameRate.num};
  const AVRational timeBase{info.timeBase.num, info.timeBase.den};
  frame->pts = info.startPts + av_rescale_q(index, perFrame, timeBase);
  frame->pkt_duration = std::max<std::int64_t>(
      1, info.startPts + av_rescale_q(index + 1, perFrame, timeBase) - frame->pts);
  fillBlack(*frame, pixelLayout(format));
  return Picture(shareFrame(*frame), index);
}

int Picture::width() const noexcept {
  return frame_ ? frame_->width : 0;
}

int Picture::height() const noexcept {
  return frame_ ? frame_->height : 0;
}

std::string Picture::pixelFormat() const {
  if (!frame_) return {};
  const char* name = av_get_pix_fmt_name(static_cast<AVPixelFormat>(frame_->format));
  return name == nullptr ? "unknown" : name;
}

std::int64_t Picture::pts() const noexcept {
  return frame_ ? frame_->pts : 0;
}

std::int64_t Picture::duration() const noexcept {
  return frame_ ? std::max<std::int64_t>(1, frame_->pkt_duration) : 1;
}

std::size_t Picture::bytes() const noexcept {
  std::size_t sum = 0;
  if (!frame_) return sum;
  for (const AVBufferRef* buffer : frame_->buf) {
    if (buffer != nullptr) sum += buffer->size;
  }
  return sum;
}

Depth Picture::workingDepth() const noexcept {
  if (!frame_ || !hasPixelLayout(static_cast<AVPixelFormat>(frame_->format))) return Depth::eight;
  return pixelLayout(static_cast<AVPixelFormat>(frame_->format)).workingDepth();
}

}  // namespace media
