// media/plain/clip_writer.cpp — footage out without FFmpeg: YUV4MPEG2 clips and portable pixmaps.
#include "media/clip_writer.h"

#include <filesystem>
#include <vector>

#include "media/input_path.h"
#include "media/null_output.h"
#include "media/pixel_conversion.h"
#include "media/plain/plain_output.h"

namespace media {
namespace {

namespace fs = std::filesystem;

void refuseEncoding(const WriteOptions& options) {
  if (options.codec.empty() && !options.quality && options.preset.empty() &&
      options.encoderOptions.empty()) {
    return;
  }
  throw Error(Problem::badOption,
              "Nothing is encoded here: leave codec, quality, preset and encoder options out.");
}

std::unique_ptr<ClipOutput> openOutput(const std::string& path, const ClipInfo& format,
                                       const ClipReader* source, const WriteOptions& options) {
  refuseEncoding(options);
  if (path == "null:") return std::make_unique<NullOutput>(format.pixelFormat);
  if (options.frames) {
    const FrameRange& frames = *options.frames;
    if (frames.first < 0 || frames.last < frames.first ||
        (source != nullptr && frames.last >= source->frameCount())) {
      throw Error(Problem::badOption, "The frames " + std::to_string(frames.first) + " to " +
                                          std::to_string(frames.last) +
                                          " are not all in the clip.");
    }
  }
  std::error_code status;
  if (fs::is_directory(path, status)) {
    throw Error(Problem::unwritable, path + " is a folder; name a file in it, such as " +
                                         (fs::path(path) / "out.y4m").string() + ".");
  }
  if (numberPattern(fs::path(path).filename().string())) {
    int number = format.imageSequence ? format.firstNumber : 1;
    if (options.frames) number += static_cast<int>(options.frames->first);
    return makePnm(path, format, options.startNumber.value_or(number), options);
  }
  if (fs::path(path).extension() != ".y4m") {
    throw Error(Problem::unsupported,
                path +
                    ": clips are written as .y4m here, or as numbered pictures such as "
                    "out.%05d.ppm.");
  }
  return makeY4m(path, format, options);
}

}  // namespace

Picture inFormat(const Picture& picture, const ClipInfo& format) {
  if (picture.pixelFormat() == format.pixelFormat) return picture;
  const auto width = static_cast<std::size_t>(picture.width());
  const auto height = static_cast<std::size_t>(picture.height());
  std::vector<float> pixels(width * height * 4);
  ArgbView view;
  view.data = pixels.data();
  view.rowBytes = static_cast<std::ptrdiff_t>(width * 4 * sizeof(float));
  view.width = picture.width();
  view.height = picture.height();
  view.depth = Depth::floating;
  toArgb(picture, view);
  return fromArgb(view, Picture::blank(format, picture.index()));
}

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
