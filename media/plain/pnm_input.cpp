// media/plain/pnm_input.cpp — numbered portable pixmaps in.
#include <filesystem>

#include "media/error.h"
#include "media/plain/plain_input.h"
#include "media/plain/pnm_file.h"

namespace media {
namespace {

namespace fs = std::filesystem;

class PnmInput : public PlainInput {
 public:
  PnmInput(const InputPath& input, const ReadOptions& options)
      : folder_(fs::path(input.url).parent_path()),
        pattern_(*numberPattern(fs::path(input.url).filename().string())),
        first_(input.firstNumber),
        rate_(options.frameRate.value_or(Rational{24, 1})),
        warnings_(input.warnings),
        model_(readPnm(file(0))) {
    while (fs::exists(file(count_))) ++count_;
  }

  ClipInfo info() const override {
    ClipInfo info;
    info.container = "image2";
    info.codec = model_->format->family == PixelLayout::Family::grey ? "pgm" : "ppm";
    info.imageSequence = true;
    info.firstNumber = first_;
    describeFrame(info, *model_->format, model_->width, model_->height);
    info.frameRate = rate_;
    info.frameCount = count_;
    return info;
  }

  std::vector<std::string> warnings() const override { return warnings_; }

  std::shared_ptr<PlainFrame> read(std::int64_t index) override {
    auto frame = readPnm(file(index));
    if (frame->format != model_->format || frame->width != model_->width ||
        frame->height != model_->height) {
      throw Error(Problem::damaged, file(index).string() +
                                        " differs from the first picture in "
                                        "size or kind.");
    }
    return frame;
  }

 private:
  fs::path file(std::int64_t index) const {
    return folder_ / pattern_.fileName(first_ + static_cast<int>(index));
  }

  fs::path folder_;
  NumberPattern pattern_;
  int first_;
  Rational rate_;
  std::vector<std::string> warnings_;
  std::shared_ptr<PlainFrame> model_;
  std::int64_t count_ = 1;
};

}  // namespace

std::unique_ptr<PlainInput> openPnm(const InputPath& input, const ReadOptions& options) {
  return std::make_unique<PnmInput>(input, options);
}

}  // namespace media
