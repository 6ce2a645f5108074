// media/colour_transform.h — the affine maps between a format's code values and RGB levels.
#pragma once

#include <array>
#include <string_view>

#include "media/argb_view.h"
#include "media/colour_codes.h"
#include "media/pixel_layout.h"

namespace media {

/// out[i] = sum over j of matrix[i][j] * in[j] + offset[i].
struct AffineMap {
  std::array<std::array<float, 3>, 3> matrix{};
  std::array<float, 3> offset{};
  bool diagonal = false;  ///< only matrix[i][i] and no offsets matter, as for RGB formats
};

struct ColourTransform {
  AffineMap toLevels;  ///< code values (red/luma, green/Cb, blue/Cr) to R, G, B levels
  AffineMap toCodes;   ///< and back
  float alphaToLevels = 1;
  float alphaToCodes = 1;
};

/// What a player would take for a stream that leaves its matrix open: BT.709 for large pictures.
ColourMatrix effectiveMatrix(ColourMatrix declared, int width, int height) noexcept;

/// Shares of red, green and blue in luma; they add up to 1.
struct LumaWeights {
  double red = 0;
  double green = 0;
  double blue = 0;
};
/// Of a clip with this matrix, by FFmpeg's name; of what a player would take where none is named.
LumaWeights lumaWeights(std::string_view matrix, int width, int height) noexcept;

/// Levels run 0..255, 0..32768 or 0..1 by `depth`. Grey and YUV follow `range` (unspecified: grey
/// full, YUV limited); RGB is always full range. Luma weights: BT.601, BT.709, BT.2020, SMPTE 240M,
/// FCC; constant-luminance BT.2020 is taken as non-constant.
ColourTransform colourTransform(const PixelLayout& layout, ColourRange range, ColourMatrix matrix,
                                Depth depth);

/// White of a depth as a float: 255, 32768 or 1.
constexpr float whiteLevel(Depth depth) noexcept {
  return depth == Depth::eight ? 255.0F : depth == Depth::sixteen ? 32768.0F : 1.0F;
}

}  // namespace media
