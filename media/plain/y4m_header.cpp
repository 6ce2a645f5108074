// media/plain/y4m_header.cpp — the first line of a YUV4MPEG2 stream.
#include "media/plain/y4m_header.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "media/error.h"

namespace media {
namespace {

constexpr std::string_view kRangeTag = "COLORRANGE=";

std::optional<int> number(std::string_view text) {
  int value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (text.empty() || error != std::errc() || stop != end || value < 0) return {};
  return value;
}

std::optional<Rational> ratio(std::string_view text) {
  const auto colon = text.find(':');
  if (colon == std::string_view::npos) return {};
  const auto first = number(text.substr(0, colon));
  const auto second = number(text.substr(colon + 1));
  if (!first || !second) return {};
  return Rational{*first, *second};
}

// Sets what a tag says; false if it says nothing sensible. Unknown tags are passed over.
bool take(Y4mHeader& header, std::string_view tag, const std::string& path) {
  const std::string_view value = tag.substr(1);
  switch (tag.front()) {
    case 'W':
    case 'H': {
      const auto size = number(value);
      if (!size || *size < 1 || *size > 65536) return false;
      (tag.front() == 'W' ? header.width : header.height) = *size;
      return true;
    }
    case 'F':
    case 'A': {
      const auto pair = ratio(value);
      if (!pair) return false;
      (tag.front() == 'F' ? header.frameRate : header.sampleAspect) = *pair;
      return true;
    }
    case 'I':
      if (value.size() != 1) return false;
      header.interlacing = value.front();
      return true;
    case 'C':
      header.format = plainFormatOfTag(value);
      if (header.format != nullptr) return true;
      throw Error(Problem::unsupported, "The format " + std::string(value) + " of " + path +
                                            " is not read here; convert it to 420, 422, 444 or "
                                            "mono.");
    case 'X':
      if (value.starts_with(kRangeTag)) {
        const std::string_view range = value.substr(kRangeTag.size());
        if (range == "FULL") header.range = ColourRange::full;
        if (range == "LIMITED") header.range = ColourRange::limited;
      }
      return true;
    default:
      return true;
  }
}

}  // namespace

Y4mHeader parseY4mHeader(std::string_view line, const std::string& path) {
  Y4mHeader header;
  bool sound = line.starts_with(kY4mMagic);
  std::size_t at = kY4mMagic.size();
  while (sound && at < line.size()) {
    const std::size_t end = std::min(line.find(' ', at), line.size());
    if (end > at) sound = take(header, line.substr(at, end - at), path);
    at = end + 1;
  }
  if (!sound || header.width == 0 || header.height == 0) {
    throw Error(Problem::notVideo, "The first line of " + path + " is no YUV4MPEG2 header.");
  }
  if (header.format == nullptr) header.format = plainFormatOfTag("");
  return header;
}

std::string y4mHeaderLine(const Y4mHeader& header) {
  const auto pair = [](const Rational& r) {
    return std::to_string(r.num) + ":" + std::to_string(r.den);
  };
  std::string line(kY4mMagic);
  line += " W" + std::to_string(header.width) + " H" + std::to_string(header.height);
  line += " F" + pair(header.frameRate) + " I" + header.interlacing;
  line += " A" + pair(header.sampleAspect) + " C" + header.format->y4mTag;
  if (header.range != ColourRange::unspecified) {
    line +=
        " X" + std::string(kRangeTag) + (header.range == ColourRange::full ? "FULL" : "LIMITED");
  }
  return line + "\n";
}

}  // namespace media
