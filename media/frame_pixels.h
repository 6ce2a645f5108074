// media/frame_pixels.h — a picture's memory as conversions see it, whatever keeps it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "media/colour_codes.h"
#include "media/picture.h"
#include "media/pixel_layout.h"

namespace media {

/// Planes of a frame and what their numbers mean; owns nothing.
struct FramePixels {
  std::array<std::uint8_t*, 4> data{};       ///< first byte of each plane's top row, or null
  std::array<std::ptrdiff_t, 4> linesize{};  ///< bytes from row to row
  int width = 0;
  int height = 0;
  bool interlaced = false;
  PixelLayout layout;
  ColourRange range = ColourRange::unspecified;
  ColourMatrix matrix = ColourMatrix::unspecified;

  std::uint8_t* row(int plane, int y) const noexcept {
    const auto i = static_cast<std::size_t>(plane);
    return data[i] + y * linesize[i];
  }
};

/// The pixels of a picture, which nobody changes. Throws Error{unsupported} for formats without a
/// layout.
FramePixels pixelsOf(const Picture& picture);

/// A picture like `like` in everything but the pixels, which must all be filled through `pixels`
/// before anybody else gets the picture. Bits that belong to no component are 0.
Picture pictureLike(const Picture& like, FramePixels& pixels);

}  // namespace media
