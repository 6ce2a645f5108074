// media/jpeg_still.cpp — a frame as a small JPEG file.
#include "media/jpeg_still.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <tuple>
#include <utility>

#include "media/av_handles.h"
#include "media/error.h"
#include "media/format_bridge.h"
#include "media/frame_shape.h"

namespace media {
namespace {

// Quantiser from 2 (best) to 31; at 4 the picture is a fifth of the size and looks the same.
constexpr int kQuantiser = 4;

struct Size {
  int width;
  int height;
};

// Both even: chroma is stored at half the size.
Size stillSize(const AVFrame& frame, int width, int height) {
  const AVRational aspect = frame.sample_aspect_ratio;
  const double stretch = aspect.num > 0 && aspect.den > 0 ? av_q2d(aspect) : 1.0;
  const double shownWidth = frame.width * stretch;
  const double scale = std::min({1.0, std::max(width, 2) / shownWidth,
                                 std::max(height, 2) / static_cast<double>(frame.height)});
  const auto even = [](double pixels) {
    return std::max(2, 2 * static_cast<int>(std::lround(pixels / 2)));
  };
  return {even(shownWidth * scale), even(frame.height * scale)};
}

// A turned copy of packed RGB.
FrameHandle turned(const AVFrame& frame, int clockwiseDegrees) {
  constexpr int kPixel = 3;
  const bool sideways = clockwiseDegrees % 180 != 0;
  FrameHandle result = makeBlankFrame(AV_PIX_FMT_RGB24, sideways ? frame.height : frame.width,
                                      sideways ? frame.width : frame.height);
  for (int y = 0; y < result->height; ++y) {
    for (int x = 0; x < result->width; ++x) {
      int fromX = x;
      int fromY = y;
      if (clockwiseDegrees == 90) std::tie(fromX, fromY) = std::pair(y, frame.height - 1 - x);
      if (clockwiseDegrees == 180) {
        std::tie(fromX, fromY) = std::pair(frame.width - 1 - x, frame.height - 1 - y);
      }
      if (clockwiseDegrees == 270) std::tie(fromX, fromY) = std::pair(frame.width - 1 - y, x);
      std::memcpy(result->data[0] + y * result->linesize[0] + kPixel * x,
                  frame.data[0] + fromY * frame.linesize[0] + kPixel * fromX, kPixel);
    }
  }
  return result;
}

}  // namespace

std::string jpegStill(const Picture& picture, int clockwiseDegrees, int width, int height) {
  width = std::min(width, kMostStillWidth);
  height = std::min(height, kMostStillHeight);
  if (clockwiseDegrees % 180 != 0) std::swap(width, height);
  const Size size = stillSize(*picture.frame(), width, height);
  FormatBridge shrink(AV_PIX_FMT_RGB24, size.width, size.height);
  FrameHandle rgb = shrink.convert(*picture.frame());
  if (clockwiseDegrees != 0) rgb = turned(*rgb, clockwiseDegrees);
  FormatBridge toJpeg(AV_PIX_FMT_YUVJ420P, rgb->width, rgb->height);
  const FrameHandle frame = toJpeg.convert(*rgb);
  frame->quality = kQuantiser * FF_QP2LAMBDA;
  frame->pts = 0;

  const AVCodec* codec = avcodec_find_encoder(AV_CODEC_ID_MJPEG);
  if (codec == nullptr) throw Error(Problem::unsupported, "This FFmpeg writes no JPEG pictures.");
  const CodecHandle encoder(orBadAlloc(avcodec_alloc_context3(codec)));
  encoder->width = frame->width;
  encoder->height = frame->height;
  encoder->pix_fmt = AV_PIX_FMT_YUVJ420P;
  encoder->time_base = {1, 1};
  encoder->flags |= AV_CODEC_FLAG_QSCALE;
  encoder->thread_count = 1;
  const PacketHandle packet = makePacket();
  int code = avcodec_open2(encoder.get(), codec, nullptr);
  if (code >= 0) code = avcodec_send_frame(encoder.get(), frame.get());
  if (code >= 0) code = avcodec_receive_packet(encoder.get(), packet.get());
  if (code < 0) {
    throw Error(Problem::unsupported,
                "A frame could not be written as a JPEG picture: " + errorText(code) + ".");
  }
  return {reinterpret_cast<const char*>(packet->data), static_cast<std::size_t>(packet->size)};
}

}  // namespace media
