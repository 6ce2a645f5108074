// hostapi/geometry.h — rectangles, points, ratios and matrices.
#pragma once

#include <cstdint>

struct A_Time {
  std::int32_t value;
  std::uint32_t scale;
};

struct A_Ratio {
  std::int32_t num;
  std::uint32_t den;
};

struct A_FloatPoint {
  double x;
  double y;
};

struct A_Matrix4 {
  double mat[4][4];
};

struct A_LegacyRect {
  std::int16_t top;
  std::int16_t left;
  std::int16_t bottom;
  std::int16_t right;
};

// Right and bottom exclusive.
struct A_LRect {
  std::int32_t left;
  std::int32_t top;
  std::int32_t right;
  std::int32_t bottom;
};

struct A_LPoint {
  std::int32_t x;
  std::int32_t y;
};

struct PF_LegacyPoint {
  std::int16_t v;
  std::int16_t h;
};

struct PF_LegacyRect {
  std::int16_t top;
  std::int16_t left;
  std::int16_t bottom;
  std::int16_t right;
};

struct PF_Point {
  std::int32_t h;
  std::int32_t v;
};

// Right and bottom exclusive.
struct PF_LRect {
  std::int32_t left;
  std::int32_t top;
  std::int32_t right;
  std::int32_t bottom;
};
using PF_Rect = PF_LRect;

struct PF_RationalScale {
  std::int32_t num;
  std::uint32_t den;
};

struct PF_FixedPoint {
  std::int32_t x;
  std::int32_t y;
};

struct PF_FloatMatrix {
  double mat[3][3];
};
