// media/format_layout.h — the layouts of FFmpeg's pixel formats, and the meaning of its colours.
#pragma once

extern "C" {
#include <libavutil/pixfmt.h>
}

#include "media/colour_codes.h"
#include "media/pixel_layout.h"

namespace media {

/// True for formats that pixelLayout() can describe: whole-byte integer components of up to 16
/// bits, or 32-bit float. Palettes, bit streams, Bayer, XYZ, half floats and hardware frames no.
bool hasPixelLayout(AVPixelFormat format) noexcept;

/// Throws Error{unsupported} unless hasPixelLayout(format).
PixelLayout pixelLayout(AVPixelFormat format);

/// A format with a layout that holds what `format` holds; `format` itself if it has one.
/// Throws Error{unsupported} if libswscale cannot read `format` either.
AVPixelFormat formatWithLayout(AVPixelFormat format);

static_assert(static_cast<int>(ColourRange::limited) == AVCOL_RANGE_MPEG &&
              static_cast<int>(ColourRange::full) == AVCOL_RANGE_JPEG);
static_assert(static_cast<int>(ColourMatrix::smpte240m) == AVCOL_SPC_SMPTE240M &&
              static_cast<int>(ColourMatrix::bt2020cl) == AVCOL_SPC_BT2020_CL);

constexpr ColourRange rangeOf(AVColorRange range) noexcept {
  return static_cast<ColourRange>(range);
}
constexpr ColourMatrix matrixOf(AVColorSpace matrix) noexcept {
  return static_cast<ColourMatrix>(matrix);
}

/// effectiveMatrix() in FFmpeg's numbers.
AVColorSpace effectiveSpace(AVColorSpace declared, int width, int height) noexcept;

}  // namespace media
