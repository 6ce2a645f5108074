// media/video_encoder.h — frames turned into packets, each with the frame's own time and duration.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>

#include "media/av_handles.h"
#include "media/encoder_choice.h"
#include "media/format_bridge.h"
#include "media/picture.h"

namespace media {

class VideoEncoder {
 public:
  using PacketSink = std::function<void(AVPacket&)>;

  /// `globalHeader`: the container wants the codec's headers apart. `model` gives size, colour and
  /// aspect. Throws Error: badOption (a setting the encoder does not know), unsupported.
  VideoEncoder(const EncoderPlan& plan, const ClipInfo& format, bool globalHeader,
               AVFieldOrder fieldOrder, std::uint32_t codecTag, int threads);

  /// Packets are in timeBase(), and valid for the call only. Throws Error{writeFailed}.
  void encode(const AVFrame& frame, const PacketSink& sink);
  void flush(const PacketSink& sink);

  const AVCodecContext& context() const noexcept { return *codec_; }
  AVRational timeBase() const noexcept { return codec_->time_base; }
  const std::vector<std::string>& notes() const noexcept { return notes_; }

 private:
  void chooseTimeBase(const ClipInfo& format);
  void send(const AVFrame* frame, const PacketSink& sink);

  CodecHandle codec_;
  FormatBridge bridge_;
  PacketHandle packet_ = makePacket();
  AVRational sourceTimeBase_{1, 1};
  int qscale_ = 0;
  std::int64_t lastPts_ = AV_NOPTS_VALUE;
  std::deque<std::pair<std::int64_t, std::int64_t>> durations_;  // of frames inside, by pts
  std::vector<std::string> notes_;
};

}  // namespace media
