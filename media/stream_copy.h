// media/stream_copy.h — a source's other streams, carried packet by packet into an output.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "media/av_handles.h"
#include "media/clip_writer.h"

namespace media {

/// Reads the source through a handle of its own and keeps at most one packet back.
class StreamCopy {
 public:
  /// Times in seconds of the source; packets that start outside are left out.
  struct Span {
    double from = 0;
    double to = 0;
  };

  /// Throws Error{missing, notVideo} if `path` can no longer be opened.
  StreamCopy(const std::string& path, const WriteOptions& options);

  /// Makes the streams in `output` that its container can carry and tells what it cannot.
  void addStreams(AVFormatContext& output, std::vector<std::string>& notes);

  /// The source's own video stream, for its properties.
  const AVStream& video() const noexcept { return *context_->streams[video_]; }
  const AVFormatContext& context() const noexcept { return *context_; }

  /// Leaves out packets outside `span`.
  void limit(Span span) noexcept { span_ = span; }
  /// Seconds to take off every time.
  void shift(std::int64_t microseconds) noexcept { shift_ = microseconds; }

  /// Hands packets that are due before `seconds` of the source to `sink`, stream and times set for
  /// `output`; a packet is the sink's to move from.
  void pump(AVFormatContext& output, double seconds, const std::function<void(AVPacket&)>& sink);

 private:
  bool readNext();
  bool carry(const AVStream& stream, const AVFormatContext& output,
             std::vector<std::string>& notes) const;

  WriteOptions options_;
  InputHandle context_;
  unsigned video_ = 0;
  std::vector<int> target_;  // output stream of each input stream, or -1
  PacketHandle held_ = makePacket();
  bool holding_ = false;
  bool ended_ = false;
  bool anything_ = false;
  std::optional<Span> span_;
  std::int64_t shift_ = 0;
};

/// Metadata of `from` without entries that describe the old file rather than the work.
void copyMetadata(const AVDictionary* from, AVDictionary** to);

/// Side data of a video stream that describes the picture: rotation, mastering display, stereo.
void copyPictureSideData(const AVStream& from, AVStream& to);

/// Chapters that lie in `span` (all without), moved by -`shift` microseconds.
void copyChapters(const AVFormatContext& from, AVFormatContext& to,
                  const std::optional<StreamCopy::Span>& span, std::int64_t shift);

}  // namespace media
