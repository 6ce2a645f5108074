// media/plain/y4m_input.cpp — YUV4MPEG2 in.
#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

#include "media/error.h"
#include "media/plain/plain_input.h"
#include "media/plain/read_file.h"
#include "media/plain/y4m_header.h"

namespace media {
namespace {

constexpr std::size_t kMostLine = 1024;

// The line at `offset` without its end; nothing if it does not end.
std::optional<std::string> lineAt(const ReadFile& file, std::int64_t offset) {
  std::array<char, kMostLine> text{};
  const std::size_t got = file.read(offset, text.data(), text.size());
  const void* end = std::memchr(text.data(), '\n', got);
  if (end == nullptr) return {};
  return std::string(static_cast<const char*>(text.data()), static_cast<const char*>(end));
}

class Y4mInput : public PlainInput {
 public:
  Y4mInput(const std::string& path, const ReadOptions& options) : file_(path) {
    const auto line = lineAt(file_, 0);
    if (!line || !line->starts_with(kY4mMagic)) {
      throw Error(Problem::notVideo,
                  path +
                      " is no YUV4MPEG2 clip; that and numbered .ppm and .pgm pictures are "
                      "what this program reads.");
    }
    header_ = parseY4mHeader(*line, path);
    if (header_.frameRate.num == 0 || header_.frameRate.den == 0) {
      header_.frameRate = options.frameRate.value_or(Rational{24, 1});
    }
    findFrames(static_cast<std::int64_t>(line->size()) + 1);
    if (frames_.empty()) throw Error(Problem::empty, path + " has no whole frame in it.");
  }

  ClipInfo info() const override {
    ClipInfo info;
    info.container = "yuv4mpegpipe";
    info.codec = "rawvideo";
    describeFrame(info, *header_.format, header_.width, header_.height);
    if (header_.range != ColourRange::unspecified) {
      info.colourRange = header_.range == ColourRange::full ? "pc" : "tv";
    }
    if (header_.sampleAspect.num > 0 && header_.sampleAspect.den > 0) {
      info.sampleAspectRatio = header_.sampleAspect;
    }
    info.frameRate = header_.frameRate;
    info.frameCount = static_cast<std::int64_t>(frames_.size());
    return info;
  }

  std::vector<std::string> warnings() const override {
    if (!truncated_) return {};
    return {"The file is truncated after frame " + std::to_string(frames_.size() - 1) +
            "; what is there is used."};
  }

  std::shared_ptr<PlainFrame> read(std::int64_t index) override {
    auto frame = std::make_shared<PlainFrame>();
    frame->format = header_.format;
    frame->width = header_.width;
    frame->height = header_.height;
    frame->interlaced = header_.interlacing == 't' || header_.interlacing == 'b';
    frame->range = header_.range;
    frame->bytes.resize(header_.format->frameBytes(header_.width, header_.height));
    const std::int64_t at = frames_[static_cast<std::size_t>(index)];
    if (file_.read(at, frame->bytes.data(), frame->bytes.size()) != frame->bytes.size()) {
      throw Error(Problem::damaged, file_.path().string() + " has become shorter.");
    }
    return frame;
  }

 private:
  // Frames may have tags of their own, so that each has to be looked for.
  void findFrames(std::int64_t at) {
    const auto bytes =
        static_cast<std::int64_t>(header_.format->frameBytes(header_.width, header_.height));
    while (at < file_.size()) {
      const auto line = lineAt(file_, at);
      const bool whole = line && line->starts_with(kY4mFrame);
      if (whole) at += static_cast<std::int64_t>(line->size()) + 1;
      if (!whole || at + bytes > file_.size()) {
        truncated_ = true;
        return;
      }
      frames_.push_back(at);
      at += bytes;
    }
  }

  ReadFile file_;
  Y4mHeader header_;
  std::vector<std::int64_t> frames_;  // where the pixels of each begin
  bool truncated_ = false;
};

}  // namespace

std::unique_ptr<PlainInput> openY4m(const std::string& path, const ReadOptions& options) {
  return std::make_unique<Y4mInput>(path, options);
}

}  // namespace media
