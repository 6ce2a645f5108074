// media/plain/y4m_output.cpp — YUV4MPEG2 out.
#include <string_view>

#include "media/error.h"
#include "media/pending_file.h"
#include "media/plain/plain_frame.h"
#include "media/plain/plain_output.h"
#include "media/plain/y4m_header.h"

namespace media {
namespace {

// What holds the input's components without loss, or with none that counts: RGB becomes 4:4:4.
const PlainFormat& formatFor(const ClipInfo& input, const WriteOptions& options) {
  const std::string& wanted = options.pixelFormat.empty() ? input.pixelFormat : options.pixelFormat;
  const PlainFormat* format = plainFormatNamed(wanted);
  if (format != nullptr && format->y4mTag != nullptr) return *format;
  if (wanted == "rgb24") return *plainFormatNamed("yuv444p");
  if (wanted == "rgb48be") return *plainFormatNamed("yuv444p16le");
  if (wanted == "gray16be") return *plainFormatNamed("gray16le");
  throw Error(Problem::badOption, "A .y4m clip holds no pictures in the format " + wanted +
                                      "; name one such as yuv420p, yuv422p10le or gray.");
}

class Y4mOutput : public ClipOutput {
 public:
  Y4mOutput(const std::string& path, const ClipInfo& input, const WriteOptions& options)
      : format_(input), file_(path, options.overwrite) {
    header_.format = &formatFor(input, options);
    header_.width = input.width;
    header_.height = input.height;
    header_.frameRate = input.frameRate;
    header_.sampleAspect = input.sampleAspectRatio;
    format_.pixelFormat = header_.format->name;
    if (format_.pixelFormat != input.pixelFormat) {
      notes_.push_back("The pictures are written as " + format_.pixelFormat + ".");
    }
  }

  void write(const Picture& picture) override {
    const Picture converted = inFormat(picture, format_);
    const PlainFrame& frame = *converted.frame();
    if (!begun_) {
      header_.interlacing = frame.interlaced ? 't' : 'p';
      header_.range = frame.range;
      put(y4mHeaderLine(header_));
      begun_ = true;
    }
    put(std::string(kY4mFrame) + "\n");
    put(std::string_view(reinterpret_cast<const char*>(frame.bytes.data()), frame.bytes.size()));
  }

  void finish() override { file_.commit(); }
  const std::vector<std::string>& notes() const noexcept override { return notes_; }
  std::string encoderName() const override { return "rawvideo"; }
  std::string pixelFormat() const override { return format_.pixelFormat; }

 private:
  void put(std::string_view bytes) {
    if (!file_.write(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size())) {
      throwWriteError(file_.path(), file_.errorCode());
    }
  }

  ClipInfo format_;
  Y4mHeader header_;
  std::vector<std::string> notes_;
  bool begun_ = false;
  PendingFile file_;
};

}  // namespace

std::unique_ptr<ClipOutput> makeY4m(const std::string& path, const ClipInfo& format,
                                    const WriteOptions& options) {
  return std::make_unique<Y4mOutput>(path, format, options);
}

}  // namespace media
