// media/plain/picture.cpp — one frame of the plain backend, shared and never changed once made.
#include "media/picture.h"

#include <algorithm>
#include <cmath>

#include "media/component_rows.h"
#include "media/error.h"
#include "media/frame_pixels.h"
#include "media/plain/plain_frame.h"

namespace media {
namespace {

FramePixels view(const PlainFrame& frame) {
  FramePixels pixels;
  auto* at = const_cast<std::uint8_t*>(frame.bytes.data());
  for (int plane = 0; plane < frame.format->planes(); ++plane) {
    const auto i = static_cast<std::size_t>(plane);
    const std::size_t rowBytes = frame.format->rowBytes(plane, frame.width);
    pixels.data[i] = at;
    pixels.linesize[i] = static_cast<std::ptrdiff_t>(rowBytes);
    at += rowBytes * static_cast<std::size_t>(frame.format->rows(plane, frame.height));
  }
  pixels.width = frame.width;
  pixels.height = frame.height;
  pixels.interlaced = frame.interlaced;
  pixels.layout = frame.format->layout();
  pixels.range = frame.range;
  pixels.matrix = frame.matrix;
  return pixels;
}

// Black: the least luma, and colour differences in the middle.
void fillBlack(const FramePixels& pixels) {
  const PixelLayout& layout = pixels.layout;
  const bool yuv = layout.family == PixelLayout::Family::yuv;
  const bool limited = yuv && pixels.range != ColourRange::full;
  for (std::size_t i = 0; i < 4; ++i) {
    if (i == 3 ? !layout.hasAlpha : static_cast<int>(i) >= layout.colours) continue;
    const ComponentLayout& c = layout.components[i];
    const bool chroma = yuv && (i == 1 || i == 2);
    const auto middle = static_cast<float>(1U << (c.depth - 1));
    const float value = i == 3    ? static_cast<float>(c.maximum())
                        : chroma  ? middle
                        : limited ? middle / 8
                                  : 0.0F;
    const int width = chroma ? ceilShift(pixels.width, layout.chromaWidthShift) : pixels.width;
    const int height = chroma ? ceilShift(pixels.height, layout.chromaHeightShift) : pixels.height;
    const std::vector<float> values(static_cast<std::size_t>(width), value);
    for (int y = 0; y < height; ++y) storeRow(values.data(), c, width, pixels.row(c.plane, y));
  }
}

}  // namespace

FramePixels pixelsOf(const Picture& picture) {
  return view(*picture.frame());
}

Picture pictureLike(const Picture& like, FramePixels& pixels) {
  const auto frame = std::make_shared<PlainFrame>(*like.frame());
  std::fill(frame->bytes.begin(), frame->bytes.end(), std::uint8_t{0});
  pixels = view(*frame);
  return Picture(frame, like.index(), like.isSubstitute());
}

Picture Picture::blank(const ClipInfo& info, std::int64_t index) {
  const PlainFormat* format = plainFormatNamed(info.pixelFormat);
  if (format == nullptr) {
    throw Error(Problem::unsupported, "The pixel format " + info.pixelFormat +
                                          " is not one that can be worked on; yuv420p, "
                                          "yuv422p10le and rgb24 are.");
  }
  if (info.width < 1 || info.height < 1) {
    throw Error(Problem::unsupported, "A picture needs a width and a height of at least 1.");
  }
  const auto frame = std::make_shared<PlainFrame>();
  frame->format = format;
  frame->width = info.width;
  frame->height = info.height;
  frame->range = info.colourRange == "pc"   ? ColourRange::full
                 : info.colourRange == "tv" ? ColourRange::limited
                                            : ColourRange::unspecified;
  const double ticks = info.frameRate.num == 0 || info.timeBase.num == 0
                           ? 1.0
                           : 1.0 / (info.frameRate.value() * info.timeBase.value());
  const auto start = [&](std::int64_t i) {
    return info.startPts + std::llround(static_cast<double>(i) * ticks);
  };
  frame->pts = start(index);
  frame->duration = std::max<std::int64_t>(1, start(index + 1) - frame->pts);
  frame->bytes.resize(format->frameBytes(info.width, info.height));
  fillBlack(view(*frame));
  return Picture(frame, index);
}

int Picture::width() const noexcept {
  return frame_ ? frame_->width : 0;
}

int Picture::height() const noexcept {
  return frame_ ? frame_->height : 0;
}

std::string Picture::pixelFormat() const {
  return frame_ ? frame_->format->name : "";
}

std::int64_t Picture::pts() const noexcept {
  return frame_ ? frame_->pts : 0;
}

std::int64_t Picture::duration() const noexcept {
  return frame_ ? frame_->duration : 1;
}

std::size_t Picture::bytes() const noexcept {
  return frame_ ? frame_->bytes.size() : 0;
}

Depth Picture::workingDepth() const noexcept {
  return frame_ ? frame_->format->layout().workingDepth() : Depth::eight;
}

}  // namespace media
