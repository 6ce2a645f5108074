// media/encoder_choice.h — which encoder, pixel format and settings write a clip.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "media/av_handles.h"
#include "media/clip_writer.h"

namespace media {

struct EncoderPlan {
  const AVCodec* encoder = nullptr;
  AVPixelFormat pixelFormat = AV_PIX_FMT_NONE;
  std::vector<std::pair<std::string, std::string>> settings;  ///< later ones win
  int qscale = 0;                                             ///< fixed quantiser; 0: none
  std::vector<std::string> notes;
};

/// What is to be encoded.
struct EncoderInput {
  AVCodecID codec = AV_CODEC_ID_NONE;  ///< of the source; NONE: no preference
  int profile = FF_PROFILE_UNKNOWN;
  AVPixelFormat pixelFormat = AV_PIX_FMT_YUV420P;
  AVColorRange range = AVCOL_RANGE_UNSPECIFIED;
};

/// For a container. Throws Error: badOption (unknown codec or pixel format), unsupported.
EncoderPlan planEncoder(const EncoderInput& input, const AVOutputFormat& container,
                        const WriteOptions& options);

/// For single pictures of a file extension such as ".png".
/// Throws Error: badOption, unsupported (an extension that is no picture's).
EncoderPlan planPictureEncoder(const EncoderInput& input, const std::string& extension,
                               const WriteOptions& options);

/// The nearest of the encoder's pixel formats, with no fewer bits or chroma samples and alpha kept
/// where there is one such; NONE if it lists none.
AVPixelFormat nearestFormat(AVPixelFormat source, AVColorRange range, const AVCodec& encoder);

}  // namespace media
