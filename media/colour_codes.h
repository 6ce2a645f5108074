// media/colour_codes.h — a picture's colour range and matrix, by the numbers that streams carry.
#pragma once

namespace media {

enum class ColourRange { unspecified = 0, limited = 1, full = 2 };

/// How luma and chroma make RGB: "matrix coefficients" of ITU-T H.273. Other numbers occur.
enum class ColourMatrix {
  rgb = 0,
  bt709 = 1,
  unspecified = 2,
  fcc = 4,
  bt470bg = 5,
  smpte170m = 6,
  smpte240m = 7,
  ycgco = 8,
  bt2020ncl = 9,
  bt2020cl = 10
};

}  // namespace media
