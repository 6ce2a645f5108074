// media/video_decoder.h — packets of one stream turned into frames, damaged ones passed over.
#pragma once

#include "media/av_handles.h"
#include "media/input_file.h"

namespace media {

class VideoDecoder {
 public:
  /// Throws Error{unsupported} if there is no decoder for the stream.
  VideoDecoder(InputFile& input, int threads);

  /// The next frame in presentation order, its pts the best known; null at the end. Packets that
  /// cannot be decoded are counted and passed over.
  FrameHandle next();

  /// Starts afresh after the input was moved or opened anew.
  void restart();

  std::int64_t badPackets() const noexcept { return badPackets_; }

 private:
  void open();

  InputFile& input_;
  int threads_;
  CodecHandle codec_;
  PacketHandle packet_ = makePacket();
  bool draining_ = false;
  std::int64_t badPackets_ = 0;
};

}  // namespace media
