// media/jpeg_still.cpp — a frame as a small JPEG file.
#include "media/jpeg_still.h"

#include <algorithm>
#include <cmath>

#include "media/av_handles.h"
#include "media/error.h"
#include "media/format_bridge.h"

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
  const double scale = std::min({1.0, std::clamp(width, 2, kMostStillWidth) / shownWidth,
                                 std::clamp(height, 2, kMostStillHeight) / double(frame.height)});
  const auto even = [](double pixels) {
    return std::max(2, 2 * static_cast<int>(std::lround(pixels / 2)));
  };
  return {even(shownWidth * scale), even(frame.height * scale)};
}

}  // namespace

std::string jpegStill(const Picture& picture, int width, int height) {
  const Size size = stillSize(*picture.frame(), width, height);
  FormatBridge shrink(AV_PIX_FMT_RGB24, size.width, size.height);
  FormatBridge toJpeg(AV_PIX_FMT_YUVJ420P, size.width, size.height);
  const FrameHandle rgb = shrink.convert(*picture.frame());
  const FrameHandle frame = toJpeg.convert(*rgb);
  frame->quality = kQuantiser * FF_QP2LAMBDA;
  frame->pts = 0;

  const AVCodec* codec = avcodec_find_encoder(AV_CODEC_ID_MJPEG);
  if (codec == nullptr) throw Error(Problem::unsupported, "This FFmpeg writes no JPEG pictures.");
  const CodecHandle encoder(orBadAlloc(avcodec_alloc_context3(codec)));
  encoder->width = size.width;
  encoder->height = size.height;
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
