// media/plain/pnm_output.cpp — numbered portable pixmaps out.
#include <filesystem>

#include "media/error.h"
#include "media/numbered_files.h"
#include "media/plain/plain_frame.h"
#include "media/plain/plain_output.h"
#include "media/plain/pnm_file.h"

namespace media {
namespace {

const char* formatFor(const std::string& path, const ClipInfo& input, const WriteOptions& options) {
  const std::string extension = std::filesystem::path(path).extension().string();
  const bool grey = extension == ".pgm";
  if (!grey && extension != ".ppm") {
    throw Error(Problem::unsupported,
                "Numbered pictures are written as .ppm or .pgm here, not " + extension + ".");
  }
  const PlainFormat* wanted =
      plainFormatNamed(options.pixelFormat.empty() ? input.pixelFormat : options.pixelFormat);
  if (wanted == nullptr) {
    throw Error(Problem::badOption,
                "The pixel format " + options.pixelFormat + " is none of .ppm and .pgm pictures.");
  }
  const bool deep = wanted->depth > 8;
  return grey ? (deep ? "gray16be" : "gray") : (deep ? "rgb48be" : "rgb24");
}

class PnmOutput : public ClipOutput {
 public:
  PnmOutput(const std::string& path, const ClipInfo& input, int firstNumber,
            const WriteOptions& options)
      : format_(input), files_(path, firstNumber, options.overwrite) {
    format_.pixelFormat = formatFor(path, input, options);
    if (format_.pixelFormat != input.pixelFormat) {
      notes_.push_back("The pictures are written as " + format_.pixelFormat + ".");
    }
  }

  void write(const Picture& picture) override {
    const std::vector<std::uint8_t> bytes = pnmBytes(*inFormat(picture, format_).frame());
    files_.add(bytes.data(), bytes.size());
  }

  void finish() override { files_.finish(); }
  const std::vector<std::string>& notes() const noexcept override { return notes_; }
  std::string encoderName() const override {
    return format_.pixelFormat.starts_with("gray") ? "pgm" : "ppm";
  }
  std::string pixelFormat() const override { return format_.pixelFormat; }

 private:
  ClipInfo format_;
  std::vector<std::string> notes_;
  NumberedFiles files_;
};

}  // namespace

std::unique_ptr<ClipOutput> makePnm(const std::string& path, const ClipInfo& format,
                                    int firstNumber, const WriteOptions& options) {
  return std::make_unique<PnmOutput>(path, format, firstNumber, options);
}

}  // namespace media
