// media/sequence_output.h — a clip written as numbered pictures.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "media/clip_output.h"
#include "media/clip_writer.h"
#include "media/numbered_files.h"
#include "media/video_encoder.h"

namespace media {

class SequenceOutput : public ClipOutput {
 public:
  /// `path` follows numberPattern(). Throws Error as ClipWriter does.
  SequenceOutput(const std::string& path, const ClipInfo& format, int firstNumber,
                 const WriteOptions& options);

  void write(const Picture& picture) override;
  void finish() override;
  const std::vector<std::string>& notes() const noexcept override { return notes_; }
  std::string encoderName() const override { return encoder_->context().codec->name; }
  std::string pixelFormat() const override;

 private:
  void takePacket(const AVPacket& packet);

  std::vector<std::string> notes_;
  std::unique_ptr<VideoEncoder> encoder_;
  std::unique_ptr<NumberedFiles> files_;
};

}  // namespace media
