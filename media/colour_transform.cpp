// media/colour_transform.cpp — the affine maps between a format's code values and RGB levels.
#include "media/colour_transform.h"

#include <cmath>

namespace media {
namespace {

using Matrix = std::array<std::array<double, 3>, 3>;

struct MatrixRow {
  ColourMatrix matrix;
  std::string_view name;
  double red;
  double blue;

  LumaWeights weights() const noexcept { return {red, 1 - red - blue, blue}; }
};

constexpr MatrixRow kMatrices[] = {
    {ColourMatrix::bt709, "bt709", 0.2126, 0.0722},
    {ColourMatrix::fcc, "fcc", 0.30, 0.11},
    {ColourMatrix::bt470bg, "bt470bg", 0.299, 0.114},
    {ColourMatrix::smpte170m, "smpte170m", 0.299, 0.114},
    {ColourMatrix::smpte240m, "smpte240m", 0.212, 0.087},
    {ColourMatrix::bt2020ncl, "bt2020nc", 0.2627, 0.0593},
    {ColourMatrix::bt2020cl, "bt2020c", 0.2627, 0.0593},
};

const MatrixRow& rowOf(ColourMatrix matrix) noexcept {
  for (const MatrixRow& row : kMatrices) {
    if (row.matrix == matrix) return row;
  }
  return kMatrices[0];
}

// From (luma 0..1, Cb and Cr -0.5..0.5) to (R, G, B), or from the components as stored.
Matrix decodingMatrix(ColourMatrix matrix) noexcept {
  if (matrix == ColourMatrix::ycgco) return {{{1, -1, 1}, {1, 1, 0}, {1, -1, -1}}};
  if (matrix == ColourMatrix::rgb) return {{{0, 0, 1}, {1, 0, 0}, {0, 1, 0}}};
  const LumaWeights weights = rowOf(matrix).weights();
  const double fromCr = 2 * (1 - weights.red);
  const double fromCb = 2 * (1 - weights.blue);
  return {{{1, 0, fromCr},
           {1, -weights.blue * fromCb / weights.green, -weights.red * fromCr / weights.green},
           {1, fromCb, 0}}};
}

Matrix inverse(const Matrix& m) noexcept {
  const auto minor = [&m](std::size_t r, std::size_t c) {
    const std::size_t r1 = (r + 1) % 3;
    const std::size_t r2 = (r + 2) % 3;
    const std::size_t c1 = (c + 1) % 3;
    const std::size_t c2 = (c + 2) % 3;
    return m[r1][c1] * m[r2][c2] - m[r1][c2] * m[r2][c1];
  };
  const double determinant = m[0][0] * minor(0, 0) + m[0][1] * minor(0, 1) + m[0][2] * minor(0, 2);
  Matrix result{};
  for (std::size_t r = 0; r < 3; ++r) {
    for (std::size_t c = 0; c < 3; ++c) result[r][c] = minor(c, r) / determinant;
  }
  return result;
}

struct Scale {
  double zero = 0;  // code value of 0.0
  double unit = 1;  // code values from 0.0 to 1.0
};

Scale fullScale(const ComponentLayout& c) noexcept {
  return {0, c.depth == 32 ? 1.0 : static_cast<double>(c.maximum())};
}

Scale lumaScale(const ComponentLayout& c, bool full) noexcept {
  if (full || c.depth == 32) return fullScale(c);
  const double step = std::ldexp(1.0, c.depth - 8);
  return {16 * step, 219 * step};
}

Scale chromaScale(const ComponentLayout& c, bool full) noexcept {
  if (c.depth == 32) return {0, 1};
  const double step = std::ldexp(1.0, c.depth - 8);
  return {128 * step, full ? static_cast<double>(c.maximum()) : 224 * step};
}

}  // namespace

ColourMatrix effectiveMatrix(ColourMatrix declared, int width, int height) noexcept {
  switch (declared) {
    case ColourMatrix::rgb:
    case ColourMatrix::ycgco:
      return declared;
    default:
      break;
  }
  for (const MatrixRow& row : kMatrices) {
    if (row.matrix == declared) return declared;
  }
  return width >= 1280 || height > 576 ? ColourMatrix::bt709 : ColourMatrix::smpte170m;
}

LumaWeights lumaWeights(std::string_view matrix, int width, int height) noexcept {
  for (const MatrixRow& row : kMatrices) {
    if (row.name == matrix) return row.weights();
  }
  return rowOf(effectiveMatrix(ColourMatrix::unspecified, width, height)).weights();
}

ColourTransform colourTransform(const PixelLayout& layout, ColourRange range, ColourMatrix matrix,
                                Depth depth) {
  using Family = PixelLayout::Family;
  const double white = whiteLevel(depth);
  ColourTransform transform;
  if (layout.hasAlpha) {
    const double unit = fullScale(layout.components[3]).unit;
    transform.alphaToLevels = static_cast<float>(white / unit);
    transform.alphaToCodes = static_cast<float>(unit / white);
  }

  std::array<Scale, 3> scales;
  Matrix decode{};
  if (layout.family == Family::rgb) {
    for (std::size_t i = 0; i < 3; ++i) {
      scales[i] = fullScale(layout.components[i]);
      decode[i][i] = 1;
    }
    transform.toLevels.diagonal = transform.toCodes.diagonal = true;
  } else if (layout.family == Family::grey) {
    scales[0] = lumaScale(layout.components[0], range != ColourRange::limited);
    decode = decodingMatrix(rowOf(matrix).matrix);
  } else {
    const bool full = range == ColourRange::full;
    const bool threeLumas = matrix == ColourMatrix::rgb;
    for (std::size_t i = 0; i < 3; ++i) {
      scales[i] = i == 0 || threeLumas ? lumaScale(layout.components[i], full)
                                       : chromaScale(layout.components[i], full);
    }
    decode = decodingMatrix(matrix);
  }

  const Matrix encode = inverse(decode);
  for (std::size_t i = 0; i < 3; ++i) {
    double toLevelsOffset = 0;
    for (std::size_t j = 0; j < 3; ++j) {
      transform.toLevels.matrix[i][j] = static_cast<float>(white * decode[i][j] / scales[j].unit);
      transform.toCodes.matrix[i][j] = static_cast<float>(scales[i].unit * encode[i][j] / white);
      toLevelsOffset -= white * decode[i][j] * scales[j].zero / scales[j].unit;
    }
    transform.toLevels.offset[i] = static_cast<float>(toLevelsOffset);
    transform.toCodes.offset[i] = static_cast<float>(scales[i].zero);
  }
  return transform;
}

}  // namespace media
