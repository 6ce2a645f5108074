// media/plain/y4m_header.h — the first line of a YUV4MPEG2 stream.
#pragma once

#include <string>
#include <string_view>

#include "media/clip_info.h"
#include "media/colour_codes.h"
#include "media/plain/plain_format.h"

namespace media {

inline constexpr std::string_view kY4mMagic = "YUV4MPEG2";
inline constexpr std::string_view kY4mFrame = "FRAME";

struct Y4mHeader {
  int width = 0;
  int height = 0;
  Rational frameRate{0, 1};     ///< 0: unknown
  Rational sampleAspect{0, 0};  ///< 0:0: unknown
  char interlacing = '?';       ///< p, t, b, m or ?
  const PlainFormat* format = nullptr;
  ColourRange range = ColourRange::unspecified;
};

/// `line` without its end. Throws Error, naming `path`: notVideo, unsupported (a format that is not
/// known).
Y4mHeader parseY4mHeader(std::string_view line, const std::string& path);

/// The line with its end; format has a tag.
std::string y4mHeaderLine(const Y4mHeader& header);

}  // namespace media
