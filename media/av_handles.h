// media/av_handles.h — owners for FFmpeg's objects, each given back by its own function.
#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
#include <libavutil/frame.h>
#include <libswscale/swscale.h>
}

#include <memory>
#include <new>
#include <string>

namespace media {

struct AvDeleter {
  void operator()(AVFrame* frame) const noexcept { av_frame_free(&frame); }
  void operator()(AVPacket* packet) const noexcept { av_packet_free(&packet); }
  void operator()(AVCodecContext* context) const noexcept { avcodec_free_context(&context); }
  void operator()(AVCodecParameters* p) const noexcept { avcodec_parameters_free(&p); }
  void operator()(SwsContext* context) const noexcept { sws_freeContext(context); }
};

/// An input format context; opened by avformat_open_input.
struct AvInputDeleter {
  void operator()(AVFormatContext* context) const noexcept { avformat_close_input(&context); }
};

/// An output format context, whose byte stream belongs to somebody else.
struct AvOutputDeleter {
  void operator()(AVFormatContext* context) const noexcept { avformat_free_context(context); }
};

using FrameHandle = std::unique_ptr<AVFrame, AvDeleter>;
using PacketHandle = std::unique_ptr<AVPacket, AvDeleter>;
using CodecHandle = std::unique_ptr<AVCodecContext, AvDeleter>;
using ScalerHandle = std::unique_ptr<SwsContext, AvDeleter>;
using ParametersHandle = std::unique_ptr<AVCodecParameters, AvDeleter>;
using InputHandle = std::unique_ptr<AVFormatContext, AvInputDeleter>;
using OutputHandle = std::unique_ptr<AVFormatContext, AvOutputDeleter>;

/// Non-null or std::bad_alloc.
template <typename T>
T* orBadAlloc(T* made) {
  if (made == nullptr) throw std::bad_alloc();
  return made;
}

inline FrameHandle makeFrame() {
  return FrameHandle(orBadAlloc(av_frame_alloc()));
}
inline PacketHandle makePacket() {
  return PacketHandle(orBadAlloc(av_packet_alloc()));
}

/// A dictionary of options or metadata.
class Dictionary {
 public:
  Dictionary() = default;
  ~Dictionary() { av_dict_free(&dict_); }
  Dictionary(const Dictionary&) = delete;
  Dictionary& operator=(const Dictionary&) = delete;

  void set(const std::string& key, const std::string& value) {
    if (av_dict_set(&dict_, key.c_str(), value.c_str(), 0) < 0) throw std::bad_alloc();
  }
  AVDictionary** address() noexcept { return &dict_; }
  /// Some key that nobody took, or empty.
  std::string anyKey() const {
    const AVDictionaryEntry* entry = av_dict_get(dict_, "", nullptr, AV_DICT_IGNORE_SUFFIX);
    return entry == nullptr ? std::string() : std::string(entry->key);
  }

 private:
  AVDictionary* dict_ = nullptr;
};

/// FFmpeg's words for a negative return code.
std::string errorText(int code);

}  // namespace media
