// media/video_decoder.cpp — packets of one stream turned into frames, damaged ones passed over.
#include "media/video_decoder.h"

#include <cerrno>
#include <string>

#include "media/error.h"

namespace media {

VideoDecoder::VideoDecoder(InputFile& input, int threads) : input_(input), threads_(threads) {
  open();
}

void VideoDecoder::open() {
  const AVStream& stream = input_.stream();
  const AVCodec* decoder = avcodec_find_decoder(stream.codecpar->codec_id);
  if (decoder == nullptr) {
    throw Error(Problem::unsupported, std::string("There is no decoder for ") +
                                          avcodec_get_name(stream.codecpar->codec_id) + " video.");
  }
  codec_.reset(orBadAlloc(avcodec_alloc_context3(decoder)));
  if (avcodec_parameters_to_context(codec_.get(), stream.codecpar) < 0) throw std::bad_alloc();
  codec_->pkt_timebase = stream.time_base;
  codec_->thread_count = threads_;
  const int code = avcodec_open2(codec_.get(), decoder, nullptr);
  if (code < 0) {
    throw Error(Problem::unsupported, std::string("The decoder for ") + decoder->name +
                                          " video does not start: " + errorText(code) + ".");
  }
}

void VideoDecoder::restart() {
  avcodec_flush_buffers(codec_.get());
  draining_ = false;
}

FrameHandle VideoDecoder::next() {
  FrameHandle frame = makeFrame();
  for (;;) {
    const int received = avcodec_receive_frame(codec_.get(), frame.get());
    if (received >= 0) {
      frame->pts = frame->best_effort_timestamp;
      return frame;
    }
    if (received == AVERROR_EOF) return nullptr;
    if (received != AVERROR(EAGAIN)) {
      ++badPackets_;
      if (draining_) return nullptr;
      continue;
    }
    if (!input_.read(*packet_)) {
      draining_ = true;
      if (avcodec_send_packet(codec_.get(), nullptr) < 0) return nullptr;
      continue;
    }
    const int sent = avcodec_send_packet(codec_.get(), packet_.get());
    if (sent < 0 && sent != AVERROR(EAGAIN)) ++badPackets_;
  }
}

}  // namespace media
