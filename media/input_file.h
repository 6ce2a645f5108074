// media/input_file.h — an open container, of which one video stream is read packet by packet.
#pragma once

#include <string>

#include "media/av_handles.h"
#include "media/clip_reader.h"
#include "media/input_path.h"

namespace media {

class InputFile {
 public:
  /// Throws Error: missing, notVideo.
  InputFile(InputPath path, ReadOptions options);

  const InputPath& path() const noexcept { return path_; }
  AVFormatContext& context() const noexcept { return *context_; }
  AVStream& stream() const noexcept { return *context_->streams[videoStream_]; }

  /// The next packet of the video stream; false at the end, be it the proper one or not: then
  /// readError() is the code that ended it, or 0.
  bool read(AVPacket& packet);
  int readError() const noexcept { return readError_; }

  /// Back to the very start, by opening anew.
  void reopen();

  /// So that the next packet is a key frame at or before `timestamp`; false if that cannot be done.
  bool seek(std::int64_t timestamp);

 private:
  void open();

  InputPath path_;
  ReadOptions options_;
  InputHandle context_;
  unsigned videoStream_ = 0;
  int readError_ = 0;
};

}  // namespace media
