// tests/effect/odd_host_test.cpp — hosts that do what they may do, one oddity after the other.
#include <gtest/gtest.h>

#include <cstring>

#include "host/panel.h"
#include "tests/effect/scene.h"

namespace effect_test {
namespace {

using host::Depth;
using host::Image;
using host::Instance;
using host::RenderPath;
using host::Role;
using host::Stress;

constexpr std::int32_t kWidth = 60;
constexpr std::int32_t kHeight = 44;
constexpr std::int32_t kFrames = 4;
constexpr FootageSize kSize{kWidth, kHeight, kFrames};

struct Oddity {
  const char* name;
  Stress stress;
  std::int32_t threads = 1;
};

host::HostOptions optionsOf(const Oddity& oddity) {
  host::HostOptions options;
  options.stress = oddity.stress;
  options.threads = oddity.threads;
  return options;
}

// An instance that is analysed in a host of this kind.
struct Analyzed : Scene {
  explicit Analyzed(const Oddity& oddity, Depth depth = Depth::bits8,
                    Role role = Role::afterEffects)
      : Scene(kSize, depth, role, optionsOf(oddity)) {
    analyzeSmoothing(1);
  }
};

class OddHost : public ::testing::TestWithParam<Oddity> {};

TEST_P(OddHost, GetsThePicturesOfAFriendlyOne) {
  for (const Depth depth : {Depth::bits8, Depth::bits16, Depth::float32}) {
    for (const RenderPath path : {RenderPath::smart, RenderPath::classic}) {
      if (depth == Depth::float32 && path == RenderPath::classic) continue;
      Analyzed friendly{{"friendly", {}}, depth};
      Analyzed odd{GetParam(), depth};
      for (std::int32_t i = 0; i < kFrames; ++i) {
        Image right;
        Image out;
        friendly.fx.render(i, depth, right, path);
        odd.fx.render(i, depth, out, path);
        expectSame(right, out);
      }
    }
  }
}

TEST_P(OddHost, GetsThePicturesOfAFriendlyOneInPremiere) {
  Analyzed friendly{{"friendly", {}}, Depth::bits8, Role::premiere};
  Analyzed odd{GetParam(), Depth::bits8, Role::premiere};
  Image right;
  Image out;
  friendly.fx.render(2, Depth::bits8, right, RenderPath::classic);
  odd.fx.render(2, Depth::bits8, out, RenderPath::classic);
  expectSame(right, out);
}

INSTANTIATE_TEST_SUITE_P(
    Each, OddHost,
    ::testing::Values(
        Oddity{"MovingHandles", {.moveHandles = true}},
        Oddity{"PoisonedMemory", {.poisonMemory = true}}, Oddity{"PaddedRows", {.rowPadding = 48}},
        Oddity{"OddlyPaddedRows", {.rowPadding = 13 * 16}},
        Oddity{"RowsFromTheBottom", {.bottomUp = true}},
        Oddity{"OddOrigins", {.originX = 7, .originY = 3}},
        Oddity{"ShuffledRows", {.shuffleRows = true}},
        Oddity{"ShuffledRowsOnManyThreads", {.shuffleRows = true}, 16},
        Oddity{"WithoutParams", {.withoutParams = true}}, Oddity{"PartialRequests", {.tiles = 4}},
        Oddity{"ManyPartialRequests", {.tiles = 12}}, Oddity{"BetweenFrames", {.timeOffset = 61}},
        Oddity{"Strict", Stress::strict(), 3}),
    [](const auto& oddity) { return oddity.param.name; });

// Analysed at full size, rendered at a part of it: each pixel is that of the full picture.
TEST(Resolution, MayChangeBetweenAnalysisAndRender) {
  for (const host::Downsample by : {host::Downsample{2, 2}, {4, 2}, {3, 1}}) {
    for (const Depth depth : {Depth::bits8, Depth::bits16, Depth::float32}) {
      for (const RenderPath path : {RenderPath::smart, RenderPath::classic}) {
        if (depth == Depth::float32 && path == RenderPath::classic) continue;
        Analyzed whole{{"whole", {}}, depth};
        Analyzed reduced{{"reduced", {.downsample = by}}, depth};
        Image right;
        Image out;
        whole.fx.render(1, depth, right, path);
        reduced.fx.render(1, depth, out, path);
        ASSERT_EQ(out.width(), kWidth / by.x);
        ASSERT_EQ(out.height(), kHeight / by.y);
        const auto pixel = static_cast<std::size_t>(host::pixelBytes(depth));
        for (std::int32_t y = 0; y < out.height(); ++y) {
          for (std::int32_t x = 0; x < out.width(); ++x) {
            ASSERT_EQ(std::memcmp(out.row(y) + static_cast<std::size_t>(x) * pixel,
                                  right.row(y * by.y) + static_cast<std::size_t>(x * by.x) * pixel,
                                  pixel),
                      0)
                << x << "," << y;
          }
        }
      }
    }
  }
}

// Before the layer the first frame's correction holds, after it the last one's; the layer itself
// has no pixels there.
TEST(Time, MayLieOutsideTheLayer) {
  for (const std::int32_t offset : {-1, -128, -100000, 128 * kFrames, 1 << 30}) {
    for (const RenderPath path : {RenderPath::smart, RenderPath::classic}) {
      SCOPED_TRACE(offset);
      Analyzed odd{{"outside", {.timeOffset = offset}}};
      Image out;
      odd.fx.render(0, Depth::bits8, out, path);
      for (std::int32_t y = 0; y < kHeight; ++y) {
        for (std::int32_t x = 0; x < kWidth; ++x) ASSERT_EQ(getPixel(out, x, y).alpha, 0.0);
      }
    }
  }
}

// What the layer says of time may change under an analysed instance, and make no sense at all.
TEST(Time, MayChangeItsMeaning) {
  for (const Role role : {Role::afterEffects, Role::premiere}) {
    for (const std::int32_t step : {0, -1, -128, 1, 127, 256, 1 << 30}) {
      SCOPED_TRACE(step);
      Analyzed odd{{"friendly", {}}, Depth::bits8, role};
      odd.footage.setTimes(step, 3200);
      Image out;
      if (role == Role::afterEffects) odd.fx.render(0, Depth::bits8, out);
      odd.fx.render(0, Depth::bits8, out, RenderPath::classic);
      {
        host::Panel panel{odd.fx};
        panel.drawUntilReady();
      }
      odd.fx.press("Analyze");
      const host::SavedInstance saved = odd.fx.save();
      Instance again = Instance::open(odd.visit.effect(), odd.footage, saved);
      // And back: the analysis is made anew, and the picture is right.
      odd.footage.setTimes(128, 3200);
      host::Panel{odd.fx}.close();
      odd.fx.render(0, Depth::bits8, out, RenderPath::classic);
      odd.fx.press("Analyze");
      odd.fx.render(2, Depth::bits8, out, RenderPath::classic);
      Analyzed friendly{{"friendly", {}}};
      Image right;
      friendly.fx.render(2, Depth::bits8, right);
      expectSame(right, out);
    }
  }
}

// The analysis asks for pixels from a thread of its own. A host that answers the thread it called
// and no other leaves it without any.
TEST(Worker, MayBeRefusedEveryCall) {
  host::HostOptions options;
  options.stress.callerThreadOnly = true;
  Scene scene{kSize, Depth::bits8, Role::premiere, options, {13, 4}};
  scene.fx.press("Analyze");
  const SavedData saved = savedData(scene.fx);
  for (std::int32_t i = 0; i < kFrames; ++i) EXPECT_FALSE(saved.analyzed(i));
  Image out;
  scene.fx.render(1, Depth::bits8, out, RenderPath::classic);
  EXPECT_NE(scene.listener.complaints().find("a thread that the host did not call on"),
            std::string::npos);
  scene.listener.forget();
}

}  // namespace
}  // namespace effect_test
