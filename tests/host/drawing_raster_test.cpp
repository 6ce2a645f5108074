// tests/host/drawing_raster_test.cpp — drawings on pixels: where lines lie and texts stand.
#include "host/drawing_raster.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>

namespace {

using host::DrawingRecord;
using host::DrawnKind;
using host::DrawnPrimitive;
using host::Raster;
using Rgb = std::array<std::uint8_t, 3>;

constexpr Rgb kBlack{0, 0, 0};
constexpr Rgb kWhite{255, 255, 255};
constexpr host::DrawnColour kWhiteInk{1, 1, 1, 1};

Raster paint(const DrawnPrimitive& primitive, double scale = 1.0, bool smooth = false) {
  DrawingRecord drawing;
  drawing.primitives.push_back(primitive);
  host::RasterOptions options;
  options.area = {100, 200, 40, 30};
  options.background = {0, 0, 0, 1};
  options.scale = scale;
  options.smoothLines = smooth;
  return Raster(drawing, options);
}

// Bounds of what is not background: left, top, right, bottom, exclusive.
std::array<int, 4> inked(const Raster& raster) {
  std::array<int, 4> box{raster.width(), raster.height(), 0, 0};
  for (int y = 0; y < raster.height(); ++y) {
    for (int x = 0; x < raster.width(); ++x) {
      if (raster.pixel(x, y) == kBlack) continue;
      box = {std::min(box[0], x), std::min(box[1], y), std::max(box[2], x + 1),
             std::max(box[3], y + 1)};
    }
  }
  return box;
}

DrawnPrimitive square(DrawnKind kind, host::FillRule rule = host::FillRule::evenOdd) {
  // Two squares, one inside the other, the same way around.
  DrawnPrimitive primitive;
  primitive.kind = kind;
  primitive.colour = kWhiteInk;
  primitive.rule = rule;
  primitive.penWidth = 1.0F;
  primitive.figures = {{{{105, 205}, {125, 205}, {125, 225}, {105, 225}}, true},
                       {{{110, 210}, {120, 210}, {120, 220}, {110, 220}}, true}};
  return primitive;
}

TEST(DrawingRaster, RectanglesFillTheirPixels) {
  DrawnPrimitive rect;
  rect.colour = {1.0F, 0.5F, 0.0F, 1.0F};
  rect.rect = {102, 203, 5, 4};
  const Raster raster = paint(rect);
  EXPECT_EQ(raster.width(), 40);
  EXPECT_EQ(raster.height(), 30);
  EXPECT_EQ(inked(raster), (std::array<int, 4>{2, 3, 7, 7}));
  EXPECT_EQ(raster.pixel(2, 3)[0], 255);
  EXPECT_NEAR(raster.pixel(2, 3)[1], 128, 1);
  EXPECT_EQ(raster.pixel(2, 3)[2], 0);
}

TEST(DrawingRaster, ScaleMultipliesEverything) {
  DrawnPrimitive rect;
  rect.colour = kWhiteInk;
  rect.rect = {102, 203, 5, 4};
  const Raster raster = paint(rect, 2.0);
  EXPECT_EQ(raster.width(), 80);
  EXPECT_EQ(raster.height(), 60);
  EXPECT_EQ(inked(raster), (std::array<int, 4>{4, 6, 14, 14}));
}

TEST(DrawingRaster, NothingLeavesTheArea) {
  DrawnPrimitive rect;
  rect.colour = kWhiteInk;
  rect.rect = {0, 0, 1000, 1000};
  EXPECT_EQ(inked(paint(rect)), (std::array<int, 4>{0, 0, 40, 30}));
}

TEST(DrawingRaster, TheFillRuleDecidesAboutTheInnerSquare) {
  const Raster evenOdd = paint(square(DrawnKind::fill, host::FillRule::evenOdd));
  const Raster winding = paint(square(DrawnKind::fill, host::FillRule::winding));
  EXPECT_EQ(evenOdd.pixel(15, 15), kBlack);
  EXPECT_EQ(evenOdd.pixel(7, 7), kWhite);
  EXPECT_EQ(winding.pixel(15, 15), kWhite);
  EXPECT_EQ(winding.pixel(7, 7), kWhite);
}

TEST(DrawingRaster, OpenFiguresAreFilledAsIfClosed) {
  DrawnPrimitive open = square(DrawnKind::fill);
  for (host::DrawnFigure& figure : open.figures) figure.closed = false;
  const Raster raster = paint(open);
  EXPECT_EQ(inked(raster), (std::array<int, 4>{5, 5, 25, 25}));
}

TEST(DrawingRaster, StrokesLieCentredOnTheirPaths) {
  DrawnPrimitive line;
  line.kind = DrawnKind::stroke;
  line.colour = kWhiteInk;
  line.penWidth = 1.0F;
  line.figures = {{{{105, 205}, {115, 205}}, false}};
  // From 4.5 to 5.5 in logical pixels: at twice the size the two rows on either side of the path.
  const Raster raster = paint(line, 2.0);
  EXPECT_EQ(inked(raster), (std::array<int, 4>{10, 9, 30, 11}));
  EXPECT_EQ(raster.pixel(12, 9), kWhite);
  EXPECT_EQ(raster.pixel(12, 10), kWhite);
}

TEST(DrawingRaster, HardEdgedLinesHaveNoInBetweenColours) {
  DrawnPrimitive line;
  line.kind = DrawnKind::stroke;
  line.colour = kWhiteInk;
  line.penWidth = 1.0F;
  line.figures = {{{{101, 201}, {135, 222}, {120, 203}}, false}};
  int ink = 0;
  int between = 0;
  const Raster hard = paint(line);
  const Raster smooth = paint(line, 1.0, true);
  for (int y = 0; y < hard.height(); ++y) {
    for (int x = 0; x < hard.width(); ++x) {
      if (hard.pixel(x, y) == kWhite) ++ink;
      EXPECT_TRUE(hard.pixel(x, y) == kWhite || hard.pixel(x, y) == kBlack);
      if (smooth.pixel(x, y) != kWhite && smooth.pixel(x, y) != kBlack) ++between;
    }
  }
  EXPECT_GT(ink, 30);
  EXPECT_GT(between, 30);
}

DrawnPrimitive word(const char* text, host::TextAlign align) {
  DrawnPrimitive primitive;
  primitive.kind = DrawnKind::text;
  primitive.colour = kWhiteInk;
  primitive.text = text;
  primitive.origin = {120, 220};
  primitive.fontSize = 12.0F;
  primitive.align = align;
  return primitive;
}

TEST(DrawingRaster, TextsStandOnTheirBaseline) {
  // Letters without and with a tail; the baseline is 20 rows down.
  const auto flat = inked(paint(word("HH", host::TextAlign::left)));
  EXPECT_NEAR(flat[3], 20, 1);
  EXPECT_NEAR(flat[1], 12, 2) << "capitals are about three quarters of the letters' size";
  const auto tailed = inked(paint(word("gg", host::TextAlign::left)));
  EXPECT_GE(tailed[3], 22);
}

TEST(DrawingRaster, TextsAreAlignedToTheirOrigin) {
  const auto left = inked(paint(word("HHH", host::TextAlign::left)));
  const auto centre = inked(paint(word("HHH", host::TextAlign::centre)));
  const auto right = inked(paint(word("HHH", host::TextAlign::right)));
  EXPECT_NEAR(left[0], 20, 2);
  EXPECT_NEAR(right[2], 20, 2);
  EXPECT_NEAR(centre[0] + centre[2], 40, 3);
  EXPECT_NEAR(left[2] - left[0], right[2] - right[0], 1);
}

TEST(DrawingRaster, LaterMarksCoverEarlierOnes) {
  DrawingRecord drawing;
  drawing.primitives.resize(2);
  drawing.primitives[0].rect = {0, 0, 10, 10};
  drawing.primitives[0].colour = kWhiteInk;
  drawing.primitives[1].rect = {5, 0, 5, 10};
  drawing.primitives[1].colour = {1, 0, 0, 1};
  host::RasterOptions options;
  options.area = {0, 0, 10, 10};
  const Raster raster(drawing, options);
  EXPECT_EQ(raster.pixel(4, 4), kWhite);
  EXPECT_EQ(raster.pixel(5, 4), (Rgb{255, 0, 0}));
}

TEST(DrawingRaster, ImpossibleSizesAreRefused) {
  host::RasterOptions options;
  options.area = {0, 0, 0, 10};
  EXPECT_THROW(Raster({}, options), std::runtime_error);
  options.area = {0, 0, 100000, 10};
  EXPECT_THROW(Raster({}, options), std::runtime_error);
}

}  // namespace
