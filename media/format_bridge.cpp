// media/format_bridge.cpp — frames brought to another pixel format or size by libswscale.
#include "media/format_bridge.h"

#include <string>

#include "media/error.h"
#include "media/format_layout.h"
#include "media/frame_shape.h"
#include "media/stream_info.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace media {
namespace {

int swsMatrix(AVColorSpace matrix) noexcept {
  switch (matrix) {
    case AVCOL_SPC_BT709:
      return SWS_CS_ITU709;
    case AVCOL_SPC_FCC:
      return SWS_CS_FCC;
    case AVCOL_SPC_SMPTE240M:
      return SWS_CS_SMPTE240M;
    case AVCOL_SPC_BT2020_NCL:
    case AVCOL_SPC_BT2020_CL:
      return SWS_CS_BT2020;
    default:
      return SWS_CS_SMPTE170M;
  }
}

bool isRgb(AVPixelFormat format) noexcept {
  const AVPixFmtDescriptor* description = av_pix_fmt_desc_get(format);
  return description != nullptr && (description->flags & AV_PIX_FMT_FLAG_RGB) != 0;
}

}  // namespace

bool FormatBridge::fits(const AVFrame& frame) const noexcept {
  return frame.format == format_ && frame.width == width_ && frame.height == height_;
}

FrameHandle FormatBridge::convert(const AVFrame& frame) {
  if (fits(frame)) return referTo(frame);
  const auto from = static_cast<AVPixelFormat>(frame.format);
  const bool jpeg = withoutJpegName(format_) != format_;
  if (jpeg && from == withoutJpegName(format_) && frame.color_range == AVCOL_RANGE_JPEG &&
      frame.width == width_ && frame.height == height_) {
    FrameHandle renamed = referTo(frame);
    renamed->format = format_;
    return renamed;
  }
  scaler_.reset(sws_getCachedContext(
      scaler_.release(), frame.width, frame.height, from, width_, height_, format_,
      SWS_BICUBIC | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT | SWS_FULL_CHR_H_INP, nullptr, nullptr,
      nullptr));
  if (!scaler_) {
    throw Error(Problem::unsupported, std::string("The pixel format ") + av_get_pix_fmt_name(from) +
                                          " cannot be turned into " + av_get_pix_fmt_name(format_) +
                                          ".");
  }
  const AVColorSpace declared =
      frame.colorspace == AVCOL_SPC_RGB ? AVCOL_SPC_UNSPECIFIED : frame.colorspace;
  const AVColorSpace matrix = effectiveSpace(declared, frame.width, frame.height);
  const int* table = sws_getCoefficients(swsMatrix(matrix));
  const bool fullIn = isRgb(from) || frame.color_range == AVCOL_RANGE_JPEG;
  const bool fullOut =
      jpeg || isRgb(format_) || (!isRgb(from) && frame.color_range == AVCOL_RANGE_JPEG);
  sws_setColorspaceDetails(scaler_.get(), table, fullIn ? 1 : 0, table, fullOut ? 1 : 0, 0, 1 << 16,
                           1 << 16);
  FrameHandle result = makeBlankFrame(format_, width_, height_);
  if (av_frame_copy_props(result.get(), &frame) < 0) throw std::bad_alloc();
  // YUV made of RGB is of limited range and says by which matrix it was made.
  if (isRgb(from) && !isRgb(format_)) {
    if (declared == AVCOL_SPC_UNSPECIFIED) result->colorspace = matrix;
    result->color_range = AVCOL_RANGE_MPEG;
  } else if (!isRgb(from) && isRgb(format_)) {
    result->colorspace = AVCOL_SPC_RGB;
    result->color_range = AVCOL_RANGE_JPEG;
  }
  if (jpeg) result->color_range = AVCOL_RANGE_JPEG;
  if (sws_scale(scaler_.get(), frame.data, frame.linesize, 0, frame.height, result->data,
                result->linesize) < 0) {
    throw Error(Problem::unsupported, "A frame could not be converted to another pixel format.");
  }
  return result;
}

}  // namespace media
