// media/plain/pnm_file.cpp — one binary portable pixmap or greymap.
#include "media/plain/pnm_file.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <string>

#include "media/error.h"
#include "media/plain/read_file.h"

namespace media {
namespace {

constexpr std::size_t kMostHeader = 4096;  // with comments
constexpr int kMostSide = 65536;

// The fields of the header, which blanks and comments part.
class HeaderText {
 public:
  explicit HeaderText(const ReadFile& file) { size_ = file.read(0, text_.data(), text_.size()); }

  char kind() const noexcept { return size_ > 2 && text_[0] == 'P' ? text_[1] : '\0'; }

  std::optional<int> number() {
    skipBlanks();
    int value = 0;
    const std::size_t first = at_;
    while (at_ < size_ && isDigit(text_[at_]) && value <= kMostSide) {
      value = 10 * value + (text_[at_++] - '0');
    }
    if (at_ == first) return {};
    return value;
  }

  // After the last number: one blank, then the pixels.
  std::size_t pixels() const noexcept { return at_ + 1; }

 private:
  static bool isDigit(char c) noexcept { return c >= '0' && c <= '9'; }

  void skipBlanks() {
    while (at_ < size_) {
      if (text_[at_] == '#') {
        while (at_ < size_ && text_[at_] != '\n') ++at_;
      } else if (std::isspace(static_cast<unsigned char>(text_[at_])) != 0) {
        ++at_;
      } else {
        return;
      }
    }
  }

  std::array<char, kMostHeader> text_{};
  std::size_t size_ = 0;
  std::size_t at_ = 2;
};

}  // namespace

std::shared_ptr<PlainFrame> readPnm(const std::filesystem::path& path) {
  const ReadFile file(path);
  HeaderText header(file);
  const char kind = header.kind();
  const auto width = header.number();
  const auto height = header.number();
  const auto white = header.number();
  if ((kind != '5' && kind != '6') || !width || !height || !white || *width < 1 || *height < 1 ||
      *width > kMostSide || *height > kMostSide) {
    throw Error(Problem::notVideo, path.string() + " is no binary .ppm or .pgm picture.");
  }
  if (*white != 255 && *white != 65535) {
    throw Error(Problem::unsupported, path.string() + " has " + std::to_string(*white) +
                                          " for white; save it with 8 or 16 bits.");
  }
  const bool deep = *white == 65535;
  auto frame = std::make_shared<PlainFrame>();
  frame->format =
      plainFormatNamed(kind == '6' ? (deep ? "rgb48be" : "rgb24") : (deep ? "gray16be" : "gray"));
  frame->width = *width;
  frame->height = *height;
  frame->bytes.resize(frame->format->frameBytes(*width, *height));
  const std::size_t got = file.read(static_cast<std::int64_t>(header.pixels()), frame->bytes.data(),
                                    frame->bytes.size());
  if (got != frame->bytes.size()) {
    throw Error(Problem::damaged, path.string() + " is cut off; save it again.");
  }
  return frame;
}

std::vector<std::uint8_t> pnmBytes(const PlainFrame& frame) {
  const bool grey = frame.format->family == PixelLayout::Family::grey;
  const std::string header = std::string(grey ? "P5\n" : "P6\n") + std::to_string(frame.width) +
                             " " + std::to_string(frame.height) + "\n" +
                             (frame.format->depth > 8 ? "65535\n" : "255\n");
  std::vector<std::uint8_t> bytes(header.begin(), header.end());
  bytes.insert(bytes.end(), frame.bytes.begin(), frame.bytes.end());
  return bytes;
}

}  // namespace media
