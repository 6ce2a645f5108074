// media/sequence_output.h — a clip written as numbered pictures.
#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "media/clip_output.h"
#include "media/clip_writer.h"
#include "media/input_path.h"
#include "media/video_encoder.h"

namespace media {

/// A folder of its own beside the final place, removed with all in it at the end.
class TemporaryFolder {
 public:
  /// Throws Error{unwritable}.
  TemporaryFolder(const std::filesystem::path& beside, const std::string& name);
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  const std::filesystem::path& path() const noexcept { return path_; }

 private:
  std::filesystem::path path_;
  int descriptor_ = -1;
};

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

  std::filesystem::path folder_;
  NumberPattern pattern_;
  int number_;
  bool overwrite_;
  std::vector<std::string> names_;
  std::vector<std::string> notes_;
  std::unique_ptr<TemporaryFolder> temporary_;
  std::unique_ptr<VideoEncoder> encoder_;
};

}  // namespace media
