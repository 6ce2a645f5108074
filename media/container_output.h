// media/container_output.h — a clip written into one container file.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "media/av_handles.h"
#include "media/clip_output.h"
#include "media/clip_writer.h"
#include "media/pending_file.h"
#include "media/stream_copy.h"
#include "media/video_encoder.h"

namespace media {

class ContainerOutput : public ClipOutput {
 public:
  /// `source` may be null: a clip without a source. `range` in ticks of format.timeBase if only a
  /// part is written. Throws Error as ClipWriter does.
  struct TickRange {
    std::int64_t from = 0;
    std::int64_t to = 0;
  };
  ContainerOutput(const std::string& path, const ClipInfo& format, bool fromSource,
                  std::optional<TickRange> range, const WriteOptions& options);
  ~ContainerOutput() override;

  void write(const Picture& picture) override;
  void finish() override;
  const std::vector<std::string>& notes() const noexcept override { return notes_; }
  std::string encoderName() const override { return encoder_->context().codec->name; }
  std::string pixelFormat() const override;

 private:
  struct BufferDeleter {
    void operator()(AVIOContext* stream) const noexcept;
  };

  void openStream();
  void openEncoder(const ClipInfo& format, const WriteOptions& options);
  void describe(const ClipInfo& format);
  void begin();
  void takePacket(AVPacket& packet);
  void checkDisk();
  void require(int code);

  PendingFile file_;
  std::vector<std::string> notes_;
  std::optional<StreamCopy> source_;
  std::unique_ptr<AVIOContext, BufferDeleter> stream_;
  OutputHandle output_;
  std::optional<VideoEncoder> encoder_;
  AVStream* video_ = nullptr;
  AVRational sourceTimeBase_{1, 1};
  std::optional<TickRange> range_;
  std::int64_t shiftTicks_ = 0;  // taken off video times, in encoder ticks
  std::int64_t shiftMicroseconds_ = 0;
  std::function<void(AVPacket&)> packetSink_;
};

}  // namespace media
