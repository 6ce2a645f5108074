// tests/effect/unanalyzed_test.cpp — a layer that was not analysed shows the notice, nothing else.
#include <gtest/gtest.h>

#include <set>

#include "tests/effect/test_footage.h"

namespace effect_test {
namespace {

using host::Depth;
using host::Image;
using host::RenderPath;

// The notice's background over a pixel.
Pixel tinted(const Pixel& in, Depth depth) {
  const auto deep = [](double c, std::uint16_t bits) {
    return double((static_cast<std::uint16_t>(c) | bits) >> 1);
  };
  switch (depth) {
    case Depth::bits8:
      return {in.alpha, double(int(in.red) / 2 + 15), double(int(in.green) / 2 + 57),
              double(int(in.blue) / 2 + 115)};
    case Depth::bits16:
      return {in.alpha, deep(in.red, 0x1FFE), deep(in.green, 0x73FE), deep(in.blue, 0xE6FF)};
    case Depth::float32:
      break;
  }
  return {in.alpha, double(float(in.red) * 0.5f + 0.060546f),
          double(float(in.green) * 0.5f + 0.224609f), double(float(in.blue) * 0.5f + 0.449218f)};
}

bool same(const Pixel& a, const Pixel& b) {
  return a.alpha == b.alpha && a.red == b.red && a.green == b.green && a.blue == b.blue;
}

TEST(Unanalyzed, TheBandCrossesTheMiddleAndTheRestIsUntouched) {
  const std::int32_t width = 400;
  const std::int32_t height = 151;
  for (const Depth depth : {Depth::bits8, Depth::bits16, Depth::float32}) {
    for (const RenderPath path : {RenderPath::smart, RenderPath::classic}) {
      if (depth == Depth::float32 && path == RenderPath::classic) continue;
      // Below white, so that 16-bit clamping to 32767 does not show.
      TestFootage footage(width, height, 3, depth, [](auto, auto x, auto y) {
        return Pixel{0.5, 0.2 + x * 0.001, 0.3 + y * 0.002, 0.6};
      });
      Visit visit{host::Role::afterEffects, {13, 14}, wholeFrames()};
      {
        host::Instance fx{visit.effect(), footage};
        Image out;
        fx.render(1, depth, out, path);
        const Image in = footage.frame(1, depth);
        const double ink = depth == Depth::bits8 ? 255.0 : depth == Depth::bits16 ? 65535.0 : 1.0;
        const std::int32_t band = width / 8;
        const std::int32_t top = (height - band) / 2;
        int inked = 0;
        for (std::int32_t y = 0; y < height; ++y) {
          for (std::int32_t x = 0; x < width; ++x) {
            const Pixel from = getPixel(in, x, y);
            const Pixel to = getPixel(out, x, y);
            if (y < top || y >= top + band) {
              ASSERT_TRUE(same(from, to)) << x << "," << y;
              continue;
            }
            if (same(to, {from.alpha, ink, ink, ink})) {
              ++inked;
            } else {
              const Pixel want = tinted(from, depth);
              ASSERT_TRUE(same(to, want))
                  << x << "," << y << " depth " << static_cast<int>(depth) << " red " << to.red
                  << " for " << want.red << ", green " << to.green << " for " << want.green
                  << ", blue " << to.blue << " for " << want.blue;
            }
          }
        }
        // Lettering covers a fair part of the band, but not most of it.
        EXPECT_GT(inked, width * band / 20);
        EXPECT_LT(inked, width * band / 2);
      }
    }
  }
}

TEST(Unanalyzed, TheLetteringIsTheSameAtEveryDepth) {
  std::set<std::vector<bool>> shapes;
  for (const Depth depth : {Depth::bits8, Depth::bits16, Depth::float32}) {
    TestFootage footage(640, 360, 1, depth, [](auto, auto, auto) {
      return Pixel{1.0, 0.1, 0.1, 0.1};
    });
    Visit visit{host::Role::afterEffects, {13, 14}, wholeFrames()};
    host::Instance fx{visit.effect(), footage};
    Image out;
    fx.render(0, depth, out);
    std::vector<bool> shape;
    for (std::int32_t y = 0; y < 360; ++y) {
      for (std::int32_t x = 0; x < 640; ++x) {
        shape.push_back(getPixel(out, x, y).red >= white(depth) * 0.99);
      }
    }
    shapes.insert(shape);
  }
  EXPECT_EQ(shapes.size(), 1u);
}

TEST(Unanalyzed, TheHostHearsThatOutputIsNotFinal) {
  TestFootage footage = flickeringFootage(64, 64, 3, Depth::bits8);
  Visit visit{host::Role::afterEffects, {13, 14}, wholeFrames()};
  host::Instance fx{visit.effect(), footage};
  EXPECT_TRUE(fx.watermarked());
  fx.press("Analyze");
  EXPECT_FALSE(fx.watermarked());
  fx.press("Clear");
  EXPECT_TRUE(fx.watermarked());
}

}  // namespace
}  // namespace effect_test
