// footage/frame_measure.h — what is kept of each frame to find shots, repeats, flashes and mattes.
//
// Everything in this room is plain arithmetic over these measures: no files, no decoder, no host.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace footage {

/// Caller-owned pixels: alpha, red, green, blue, a byte each, full range. `data` is the first pixel
/// of the top row; `rowBytes` may be padded or negative.
struct ArgbRows {
  const std::uint8_t* data = nullptr;
  std::ptrdiff_t rowBytes = 0;
  int width = 0;
  int height = 0;

  const std::uint8_t* row(int y) const noexcept { return data + y * rowBytes; }
};

/// The grey thumbnail's cells cover the whole frame evenly, whatever its shape.
inline constexpr int kThumbnailWidth = 48;
inline constexpr int kThumbnailHeight = 27;
inline constexpr int kThumbnailCells = kThumbnailWidth * kThumbnailHeight;
using Thumbnail = std::array<std::uint16_t, kThumbnailCells>;  ///< luminance in 1/256, row by row
/// So do the cells of the coarse picture in colour.
inline constexpr int kMosaicWidth = 16;
inline constexpr int kMosaicHeight = 9;
inline constexpr int kMosaicCells = kMosaicWidth * kMosaicHeight;

/// Rows or columns along one edge of the frame that look like a bar: as dark as the edge itself and
/// as even. The whole width or height when nothing ends the bar.
struct Bar {
  std::uint16_t extent = 0;  ///< rows or columns; 0 = none
  std::uint8_t edge = 0;  ///< percent of the bar's length where the picture beyond it is brighter
};

/// One frame's measures; about 3.7 KB. Luminance is 0.3 R + 0.59 G + 0.11 B.
struct FrameMeasure {
  std::int32_t width = 0;  ///< of the frame, pixels
  std::int32_t height = 0;
  std::uint64_t hash = 0;     ///< equal for frames equal in every byte; else different, near enough
  double meanLuminance = 0;   ///< 0..255
  std::uint32_t sampled = 0;  ///< pixels in the histogram, at most 65535
  std::array<std::uint16_t, 256> histogram{};  ///< of luminance; counts
  Thumbnail thumbnail{};
  std::array<std::array<std::uint8_t, 3>, kMosaicCells> mosaic{};  ///< mean red, green, blue
  Bar top, bottom, left, right;
};

/// Measures a frame. Hash and bars look at every pixel they need; the rest samples large frames
/// evenly. A frame without pixels gives a fresh record. Any thread; no allocation.
FrameMeasure measureFrame(const ArgbRows& pixels);

}  // namespace footage
