// media/plain/plain_format.h — the pixel formats that the plain formats of footage have.
#pragma once

#include <cstddef>
#include <string_view>

#include "media/pixel_layout.h"

namespace media {

/// Components of 8 bits in bytes, deeper ones in two: little-endian in YUV4MPEG2, big-endian in
/// portable pixmaps.
struct PlainFormat {
  const char* name;    ///< as FFmpeg has it
  const char* y4mTag;  ///< after the C of a YUV4MPEG2 header; null: not of that format
  PixelLayout::Family family;
  int depth;
  int chromaWidthShift = 0;
  int chromaHeightShift = 0;
  bool alpha = false;
  bool packed = false;  ///< components of a pixel one after the other
  bool bigEndian = false;

  int componentBytes() const noexcept { return depth > 8 ? 2 : 1; }
  int components() const noexcept {
    return (family == PixelLayout::Family::grey ? 1 : 3) + (alpha ? 1 : 0);
  }
  int planes() const noexcept { return packed ? 1 : components(); }
  /// Bytes of one row of a plane, and its rows.
  std::size_t rowBytes(int plane, int width) const noexcept;
  int rows(int plane, int height) const noexcept;
  std::size_t frameBytes(int width, int height) const noexcept;

  PixelLayout layout() const noexcept;
};

/// Null for other names and tags. Several tags may mean one format.
const PlainFormat* plainFormatNamed(std::string_view name) noexcept;
const PlainFormat* plainFormatOfTag(std::string_view tag) noexcept;

}  // namespace media
