// media/clip_writer.cpp — footage out: encodes pictures, carries everything else over.
#include "media/clip_writer.h"

#include <filesystem>

#include "media/clip_output.h"
#include "media/container_output.h"
#include "media/input_path.h"
#include "media/log_capture.h"
#include "media/null_output.h"
#include "media/sequence_output.h"

namespace media {
namespace {

namespace fs = std::filesystem;

std::unique_ptr<ClipOutput> openOutput(const std::string& path, const ClipInfo& format,
                                       const ClipReader* source, const WriteOptions& options) {
  captureLibraryLog();
  if (path == "null:") return std::make_unique<NullOutput>(format.pixelFormat);
  std::optional<ContainerOutput::TickRange> range;
  if (options.frames) {
    const FrameRange& frames = *options.frames;
    if (frames.first < 0 || frames.last < frames.first ||
        (source != nullptr && frames.last >= source->frameCount())) {
      throw Error(Problem::badOption, "The frames " + std::to_string(frames.first) + " to " +
                                          std::to_string(frames.last) +
                                          " are not all in the clip.");
    }
    if (source != nullptr) {
      range = {source->ptsOf(frames.first), source->ptsOf(frames.last + 1)};
    }
  }
  std::error_code status;
  if (fs::is_directory(path, status)) {
    throw Error(Problem::unwritable, path + " is a folder; name a file in it, such as " +
                                         (fs::path(path) / "out.mp4").string() + ".");
  }
  if (numberPattern(fs::path(path).filename().string())) {
    int number = format.imageSequence ? format.firstNumber : 1;
    if (options.frames) number += static_cast<int>(options.frames->first);
    return std::make_unique<SequenceOutput>(path, format, options.startNumber.value_or(number),
                                            options);
  }
  const bool copies = source != nullptr && !format.imageSequence;
  return std::make_unique<ContainerOutput>(path, format, copies, range, options);
}

}  // namespace

class ClipWriter::Impl {
 public:
  Impl(const std::string& path, const ClipInfo& format, const ClipReader* source,
       const WriteOptions& options)
      : output(openOutput(path, format, source, options)) {}

  std::unique_ptr<ClipOutput> output;
  std::int64_t frames = 0;
};

ClipWriter::ClipWriter(const std::string& path, const ClipReader& source, WriteOptions options)
    : impl_(std::make_unique<Impl>(path, source.info(), &source, options)) {}
ClipWriter::ClipWriter(const std::string& path, const ClipInfo& format, WriteOptions options)
    : impl_(std::make_unique<Impl>(path, format, nullptr, options)) {}
ClipWriter::~ClipWriter() = default;
ClipWriter::ClipWriter(ClipWriter&&) noexcept = default;
ClipWriter& ClipWriter::operator=(ClipWriter&&) noexcept = default;

void ClipWriter::write(const Picture& picture) {
  impl_->output->write(picture);
  ++impl_->frames;
}

void ClipWriter::finish() {
  if (impl_->frames == 0) {
    throw Error(Problem::empty, "No frame was written, so there is no output.");
  }
  impl_->output->finish();
}

const std::vector<std::string>& ClipWriter::notes() const noexcept {
  return impl_->output->notes();
}
std::string ClipWriter::encoderName() const {
  return impl_->output->encoderName();
}
std::string ClipWriter::pixelFormat() const {
  return impl_->output->pixelFormat();
}
std::int64_t ClipWriter::framesWritten() const noexcept {
  return impl_->frames;
}

}  // namespace media
