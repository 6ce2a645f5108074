// media/frame_pixels.cpp — FFmpeg's frames as conversions see them.
#include "media/frame_pixels.h"

#include <cstring>

#include "media/av_handles.h"
#include "media/format_layout.h"
#include "media/frame_shape.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace media {
namespace {

ColourRange declaredRange(const AVFrame& frame) noexcept {
  const char* name = av_get_pix_fmt_name(static_cast<AVPixelFormat>(frame.format));
  if (name != nullptr && std::strncmp(name, "yuvj", 4) == 0) return ColourRange::full;
  return rangeOf(frame.color_range);
}

FramePixels view(const AVFrame& frame) {
  FramePixels pixels;
  for (std::size_t i = 0; i < pixels.data.size(); ++i) {
    pixels.data[i] = frame.data[i];
    pixels.linesize[i] = frame.linesize[i];
  }
  pixels.width = frame.width;
  pixels.height = frame.height;
  pixels.interlaced = frame.interlaced_frame != 0;
  pixels.layout = pixelLayout(static_cast<AVPixelFormat>(frame.format));
  pixels.range = declaredRange(frame);
  pixels.matrix = matrixOf(frame.colorspace);
  return pixels;
}

// Whether writing all components leaves nothing of what a row held before.
bool everyBitIsSet(const PixelLayout& layout) noexcept {
  for (std::size_t i = 0; i < layout.components.size(); ++i) {
    const ComponentLayout& c = layout.components[i];
    const bool used = i == 3 ? layout.hasAlpha : static_cast<int>(i) < layout.colours;
    if (used && (c.shared || c.step != c.bytes)) return false;
  }
  return true;
}

}  // namespace

FramePixels pixelsOf(const Picture& picture) {
  return view(*picture.frame());
}

Picture pictureLike(const Picture& like, FramePixels& pixels) {
  const AVFrame& model = *like.frame();
  const auto format = static_cast<AVPixelFormat>(model.format);
  const bool allSet = everyBitIsSet(pixelLayout(format));
  FrameHandle frame = allSet ? makeUnsetFrameLike(model) : makeFrameLike(model, format);
  pixels = view(*frame);
  return Picture(std::shared_ptr<AVFrame>(frame.release(), AvDeleter()), like.index(),
                 like.isSubstitute());
}

}  // namespace media
