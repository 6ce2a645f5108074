// media/plain/plain_frame.h — a picture's memory in the plain backend.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "media/colour_codes.h"
#include "media/plain/plain_format.h"

namespace media {

/// Planes one after the other without gaps, as the files have them.
struct PlainFrame {
  const PlainFormat* format = nullptr;
  int width = 0;
  int height = 0;
  bool interlaced = false;
  ColourRange range = ColourRange::unspecified;
  ColourMatrix matrix = ColourMatrix::unspecified;
  std::int64_t pts = 0;
  std::int64_t duration = 1;
  std::vector<std::uint8_t> bytes;  ///< format->frameBytes(width, height)
};

}  // namespace media
