// media/video_encoder.cpp — frames turned into packets, each with the frame's own time and
// duration.
#include "media/video_encoder.h"

#include <algorithm>

#include "media/colour_names.h"
#include "media/error.h"
#include "media/format_layout.h"
#include "media/frame_shape.h"
#include "media/log_capture.h"
#include "media/stream_info.h"

extern "C" {
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
}

namespace media {
namespace {

bool isRgb(AVPixelFormat format) noexcept {
  const AVPixFmtDescriptor* description = av_pix_fmt_desc_get(format);
  return description != nullptr && (description->flags & AV_PIX_FMT_FLAG_RGB) != 0;
}

std::string because() {
  const std::string message = takeLibraryMessage();
  return message.empty() ? "." : " (" + message + ").";
}

}  // namespace

VideoEncoder::VideoEncoder(const EncoderPlan& plan, const ClipInfo& format, bool globalHeader,
                           AVFieldOrder fieldOrder, std::uint32_t codecTag, int threads)
    : codec_(orBadAlloc(avcodec_alloc_context3(plan.encoder))),
      bridge_(plan.pixelFormat, format.width, format.height),
      qscale_(plan.qscale) {
  takeLibraryMessage();
  codec_->width = format.width;
  codec_->height = format.height;
  codec_->pix_fmt = plan.pixelFormat;
  codec_->sample_aspect_ratio = {format.sampleAspectRatio.num, format.sampleAspectRatio.den};
  ColourProperties colour = colourProperties(format);
  const AVPixelFormat source = av_get_pix_fmt(format.pixelFormat.c_str());
  if (isRgb(source) && !isRgb(plan.pixelFormat)) {  // as FormatBridge makes it
    colour.range = AVCOL_RANGE_MPEG;
    if (colour.matrix == AVCOL_SPC_RGB || colour.matrix == AVCOL_SPC_UNSPECIFIED) {
      colour.matrix = effectiveSpace(AVCOL_SPC_UNSPECIFIED, format.width, format.height);
    }
  } else if (!isRgb(source) && isRgb(plan.pixelFormat)) {
    colour.range = AVCOL_RANGE_JPEG;
    colour.matrix = AVCOL_SPC_RGB;
  }
  if (withoutJpegName(plan.pixelFormat) != plan.pixelFormat) colour.range = AVCOL_RANGE_JPEG;
  codec_->color_range = colour.range;
  codec_->colorspace = colour.matrix;
  codec_->color_primaries = colour.primaries;
  codec_->color_trc = colour.transfer;
  codec_->thread_count = threads;
  codec_->codec_tag = codecTag;
  if (fieldOrder != AV_FIELD_UNKNOWN && fieldOrder != AV_FIELD_PROGRESSIVE) {
    codec_->field_order = fieldOrder;
    codec_->flags |= AV_CODEC_FLAG_INTERLACED_DCT | AV_CODEC_FLAG_INTERLACED_ME;
  }
  if (globalHeader) codec_->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  if (qscale_ > 0) {
    codec_->flags |= AV_CODEC_FLAG_QSCALE;
    codec_->global_quality = qscale_ * FF_QP2LAMBDA;
  }
  chooseTimeBase(format);
  const bool tiny = format.width < 64 || format.height < 64;
  if (tiny && plan.encoder->id == AV_CODEC_ID_FFV1) codec_->slices = 1;  // by itself it wants 4

  Dictionary settings;
  for (const auto& [key, value] : plan.settings) settings.set(key, value);
  const std::string name = plan.encoder->name;
  const int code = avcodec_open2(codec_.get(), plan.encoder, settings.address());
  if (code < 0) {
    throw Error(Problem::badOption,
                "The encoder " + name + " does not take these settings" + because());
  }
  const std::string unknown = settings.anyKey();
  if (!unknown.empty()) {
    throw Error(Problem::badOption,
                "The encoder " + name + " has no option called \"" + unknown + "\".");
  }
}

void VideoEncoder::chooseTimeBase(const ClipInfo& format) {
  sourceTimeBase_ = {format.timeBase.num, format.timeBase.den};
  codec_->time_base = sourceTimeBase_;
  codec_->framerate = {format.frameRate.num, format.frameRate.den};
  const AVCodecID id = codec_->codec_id;
  const bool fixedRates = id == AV_CODEC_ID_MPEG1VIDEO || id == AV_CODEC_ID_MPEG2VIDEO ||
                          id == AV_CODEC_ID_DVVIDEO || id == AV_CODEC_ID_THEORA;
  const bool coarse = id == AV_CODEC_ID_MPEG4 && sourceTimeBase_.den > 65535;
  if (fixedRates || (coarse && !format.variableFrameRate)) {
    codec_->time_base = av_inv_q(codec_->framerate);
  } else if (coarse) {
    codec_->time_base = {1, 60000};
  }
  if (fixedRates && format.variableFrameRate) {
    notes_.push_back(std::string("The codec ") + avcodec_get_name(id) +
                     " knows only fixed frame rates; uneven frame times become even.");
  }
}

void VideoEncoder::encode(const AVFrame& frame, const PacketSink& sink) {
  const FrameHandle converted = bridge_.convert(frame);
  converted->pts = av_rescale_q(frame.pts, sourceTimeBase_, codec_->time_base);
  if (lastPts_ != AV_NOPTS_VALUE) converted->pts = std::max(converted->pts, lastPts_ + 1);
  lastPts_ = converted->pts;
  const std::int64_t duration = std::max<std::int64_t>(
      1, av_rescale_q(frame.pkt_duration, sourceTimeBase_, codec_->time_base));
  durations_.emplace_back(converted->pts, duration);
  converted->pkt_duration = duration;
  converted->pict_type = AV_PICTURE_TYPE_NONE;
  converted->quality = codec_->global_quality;
  send(converted.get(), sink);
}

void VideoEncoder::flush(const PacketSink& sink) {
  send(nullptr, sink);
}

void VideoEncoder::send(const AVFrame* frame, const PacketSink& sink) {
  takeLibraryMessage();
  const int sent = avcodec_send_frame(codec_.get(), frame);
  if (sent < 0 && sent != AVERROR_EOF) {
    throw Error(Problem::writeFailed, std::string("The encoder ") + codec_->codec->name +
                                          " failed: " + errorText(sent) + because());
  }
  for (;;) {
    const int received = avcodec_receive_packet(codec_.get(), packet_.get());
    if (received == AVERROR(EAGAIN) || received == AVERROR_EOF) return;
    if (received < 0) {
      throw Error(Problem::writeFailed, std::string("The encoder ") + codec_->codec->name +
                                            " failed: " + errorText(received) + because());
    }
    const auto same =
        std::ranges::find(durations_, packet_->pts, &std::pair<std::int64_t, std::int64_t>::first);
    if (same != durations_.end()) {
      packet_->duration = same->second;
      durations_.erase(same);
    }
    sink(*packet_);
    av_packet_unref(packet_.get());
  }
}

}  // namespace media
