// tests/host/pixel_callbacks_test.cpp — worlds copied into worlds, stretched and clipped.
#include <cstdint>
#include <cstring>
#include <optional>
#include <random>
#include <vector>

#include "host/image.h"
#include "tests/host/test_effect_fixture.h"

namespace {

using host::Depth;
using host::Image;

// A byte for every place, counted on from `first`.
void paint(Image& image, unsigned first) {
  for (std::int32_t y = 0; y < image.height(); ++y) {
    for (std::ptrdiff_t i = 0; i < image.rowBytes(); ++i) {
      image.row(y)[i] = static_cast<std::byte>(first++ * 167U % 251U);
    }
  }
}

// Pixel by pixel, by the rule of three.
void copyPlainly(const Image& source, const PF_Rect& from, Image& destination, const PF_Rect& to) {
  const auto bytes = static_cast<std::ptrdiff_t>(host::pixelBytes(source.depth()));
  for (std::int32_t y = to.top; y < to.bottom; ++y) {
    for (std::int32_t x = to.left; x < to.right; ++x) {
      const std::int32_t sx =
          from.left + (x - to.left) * (from.right - from.left) / (to.right - to.left);
      const std::int32_t sy =
          from.top + (y - to.top) * (from.bottom - from.top) / (to.bottom - to.top);
      const bool inside = x >= 0 && x < destination.width() && y >= 0 && y < destination.height() &&
                          sx >= 0 && sx < source.width() && sy >= 0 && sy < source.height();
      if (!inside) continue;
      std::memcpy(destination.row(y) + x * bytes, source.row(sy) + sx * bytes,
                  static_cast<std::size_t>(bytes));
    }
  }
}

bool same(const Image& a, const Image& b) {
  for (std::int32_t y = 0; y < a.height(); ++y) {
    if (std::memcmp(a.row(y), b.row(y), static_cast<std::size_t>(a.rowBytes())) != 0) return false;
  }
  return true;
}

class CopyWorld : public TestEffect {
 protected:
  // Both of the same depth; the rectangles may be null.
  void expectAsPlainly(Image& picture, PF_Rect* from, std::int32_t width, std::int32_t height,
                       PF_Rect* to) {
    Image expected(width, height, picture.depth());
    Image made(width, height, picture.depth());
    paint(expected, 5);
    paint(made, 5);
    const PF_Rect allOfSource{0, 0, picture.width(), picture.height()};
    const PF_Rect allOfMade{0, 0, width, height};
    copyPlainly(picture, from != nullptr ? *from : allOfSource, expected,
                to != nullptr ? *to : allOfMade);
    host::Effect effect(ae, module);
    host::Instance instance(effect, source);
    pressing(instance, [&](const TestCall& call) {
      PF_EffectWorld in = picture.world(false);
      PF_EffectWorld out = made.world(true);
      EXPECT_EQ(call.in->utils->copy(call.in->effect_ref, &in, &out, from, to), 0);
    });
    EXPECT_TRUE(same(made, expected));
  }
};

TEST_F(CopyWorld, TakesAllOfBothUnlessToldOtherwise) {
  for (const Depth depth : {Depth::bits8, Depth::bits16, Depth::float32}) {
    Image picture(7, 5, depth);
    paint(picture, 0);
    expectAsPlainly(picture, nullptr, 7, 5, nullptr);
    expectAsPlainly(picture, nullptr, 15, 3, nullptr);
    expectAsPlainly(picture, nullptr, 3, 11, nullptr);
  }
}

TEST_F(CopyWorld, StretchesAndClipsAnyRectangles) {
  const auto seed = std::random_device{}();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  const auto number = [&](int from, int to) {
    return from + static_cast<std::int32_t>(random() % static_cast<unsigned>(to - from + 1));
  };
  Image picture(9, 6, Depth::bits8);
  paint(picture, 0);
  for (int i = 0; i < 60; ++i) {
    PF_Rect from{number(-3, 6), number(-3, 4), 0, 0};
    from.right = from.left + number(1, 12);
    from.bottom = from.top + number(1, 8);
    PF_Rect to{number(-4, 6), number(-3, 4), 0, 0};
    to.right = i % 3 == 0 ? to.left + from.right - from.left : to.left + number(1, 20);
    to.bottom = to.top + number(1, 8);
    expectAsPlainly(picture, &from, 11, 7, &to);
  }
}

}  // namespace
