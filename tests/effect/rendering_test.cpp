// tests/effect/rendering_test.cpp — analysed clips are corrected as the arithmetic says,
// everywhere.
#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "tests/effect/reference_model.h"
#include "tests/effect/scene.h"

namespace effect_test {
namespace {

using host::Depth;
using host::Image;
using host::RenderPath;

constexpr std::int32_t kWidth = 131;
constexpr std::int32_t kHeight = 93;
constexpr std::int32_t kFrames = 9;
constexpr FootageSize kSize{kWidth, kHeight, kFrames};
constexpr Area kWhole{0, 0, kWidth, kHeight};

std::vector<Levels> measureAll(TestFootage& footage, Area area, std::int32_t step, bool favor,
                               Depth depth) {
  std::vector<Levels> levels;
  for (std::int32_t i = 0; i < footage.info().frameCount; ++i) {
    levels.push_back(measure(footage.frame(i, depth), area, step, favor));
  }
  return levels;
}

// Compares a rendered frame with the model, pixel by pixel.
void expectCorrected(const Image& input, const Image& output, const Correction& c) {
  ASSERT_EQ(input.width(), output.width());
  ASSERT_EQ(input.height(), output.height());
  int wrong = 0;
  for (std::int32_t y = 0; y < input.height() && wrong < 5; ++y) {
    for (std::int32_t x = 0; x < input.width() && wrong < 5; ++x) {
      const Pixel in = getPixel(input, x, y);
      const Pixel out = getPixel(output, x, y);
      const double ins[3] = {in.red, in.green, in.blue};
      const double outs[3] = {out.red, out.green, out.blue};
      bool good = in.alpha == out.alpha;
      for (int i = 0; i < 3; ++i) {
        if (input.depth() == Depth::bits8) {
          good &= matchesLevel(idealLevel(c, int(ins[i])), int(outs[i]));
        } else {
          const bool deep = input.depth() == Depth::bits16;
          const double want = deep ? corrected16(c, ins[i]) : correctedFloat(c, ins[i]);
          // The quick power turns the last bit of the exponent into some 1e-5 of the value.
          const double slack = c.method == 3 ? 5e-5 * std::max(want, deep ? 32768.0 * 1e-3 : 1e-3) +
                                                   (deep ? 1.0 : 0.0)
                                             : 0.0;
          good &= std::fabs(want - outs[i]) <= slack;
        }
      }
      if (!good) {
        ++wrong;
        ADD_FAILURE() << "at " << x << "," << y << ": " << in.red << " " << in.green << " "
                      << in.blue << " became " << out.red << " " << out.green << " " << out.blue;
      }
    }
  }
}

using Case = std::tuple<Depth, int, RenderPath>;

class EveryMethod : public ::testing::TestWithParam<Case> {};

TEST_P(EveryMethod, CorrectsSmoothedFramesAsTheModelDoes) {
  const auto [depth, method, path] = GetParam();
  Scene scene{kSize, depth};
  scene.fx.param("Number of smoothing frames").set(2);
  scene.fx.param("Correction method").set(method);
  scene.fx.press("Analyze");

  // Speed 5 on 93 rows: 93 / 5 and 93 / 2 are below 60, so every pixel counts.
  ASSERT_EQ(samplingStep(5, kWhole), 1);
  const auto input = measureAll(scene.footage, kWhole, 1, false, depth);
  const auto desired = smooth(input, 2);
  for (std::int32_t i = 0; i < kFrames; ++i) {
    Image output;
    scene.fx.render(i, depth, output, path);
    const auto n = static_cast<std::size_t>(i);
    expectCorrected(scene.footage.frame(i, depth), output,
                    {method, input[n], desired[n], false, 99.0});
  }
}

INSTANTIATE_TEST_SUITE_P(
    All, EveryMethod,
    ::testing::Values(
        Case{Depth::bits8, 1, RenderPath::smart}, Case{Depth::bits8, 2, RenderPath::smart},
        Case{Depth::bits8, 3, RenderPath::smart}, Case{Depth::bits16, 1, RenderPath::smart},
        Case{Depth::bits16, 2, RenderPath::smart}, Case{Depth::bits16, 3, RenderPath::smart},
        Case{Depth::float32, 1, RenderPath::smart}, Case{Depth::float32, 2, RenderPath::smart},
        Case{Depth::float32, 3, RenderPath::smart}, Case{Depth::bits8, 1, RenderPath::classic},
        Case{Depth::bits8, 2, RenderPath::classic}, Case{Depth::bits8, 3, RenderPath::classic},
        Case{Depth::bits16, 1, RenderPath::classic}, Case{Depth::bits16, 2, RenderPath::classic},
        Case{Depth::bits16, 3, RenderPath::classic}));

class Clipping : public ::testing::TestWithParam<std::tuple<int, double, RenderPath>> {};

TEST_P(Clipping, BendsTheTopInClassicRendersOnly) {
  const auto [method, percent, path] = GetParam();
  Scene scene{kSize};
  scene.fx.param("Number of smoothing frames").set(3);
  scene.fx.param("Correction method").set(method);
  scene.fx.param("Adjust for clipping").set(1);
  scene.fx.param("Adjust for clipping at %").set(percent);
  scene.fx.press("Analyze");
  const auto input = measureAll(scene.footage, kWhole, 1, false, Depth::bits8);
  const auto desired = smooth(input, 3);
  for (std::int32_t i = 0; i < kFrames; ++i) {
    Image output;
    scene.fx.render(i, Depth::bits8, output, path);
    const auto n = static_cast<std::size_t>(i);
    const bool bent = path == RenderPath::classic;
    expectCorrected(scene.footage.frame(i, Depth::bits8), output,
                    {method, input[n], desired[n], bent, percent});
  }
}

INSTANTIATE_TEST_SUITE_P(All, Clipping,
                         ::testing::Values(std::tuple{1, 99.0, RenderPath::classic},
                                           std::tuple{1, 60.0, RenderPath::classic},
                                           std::tuple{2, 45.0, RenderPath::classic},
                                           std::tuple{3, 45.0, RenderPath::classic},
                                           std::tuple{1, 100.0, RenderPath::classic},
                                           std::tuple{1, 60.0, RenderPath::smart},
                                           std::tuple{2, 45.0, RenderPath::smart}));

TEST(Keyframes, GiveTheTargetOfEachFrame) {
  for (const Depth depth : {Depth::bits8, Depth::bits16, Depth::float32}) {
    Scene scene{kSize, depth};
    scene.fx.param("Deflicker method").set(1);
    scene.fx.param("Luminance").setTextAt(0, "80");
    scene.fx.param("Luminance").setTextAt(8, "120");
    scene.fx.press("Analyze");
    const auto input = measureAll(scene.footage, kWhole, 1, false, depth);
    for (std::int32_t i = 0; i < kFrames; ++i) {
      Image output;
      scene.fx.render(i, depth, output);
      const Levels target{80.0 + 5.0 * i, 0.0};
      expectCorrected(scene.footage.frame(i, depth), output,
                      {1, input[static_cast<std::size_t>(i)], target, false, 99.0});
    }
    EXPECT_NEAR(savedData(scene.fx).level(2, 4), 100.0, 1e-9);
  }
}

TEST(Keyframes, ShiftSpreadIsTheTargetSpread) {
  Scene scene{kSize};
  scene.fx.param("Deflicker method").set(1);
  scene.fx.param("Correction method").set(2);
  scene.fx.param("Luminance").setText("110");
  scene.fx.param("Shift spread").set(20);
  scene.fx.press("Analyze");
  const auto input = measureAll(scene.footage, kWhole, 1, false, Depth::bits8);
  for (std::int32_t i = 0; i < kFrames; ++i) {
    Image output;
    scene.fx.render(i, Depth::bits8, output);
    expectCorrected(scene.footage.frame(i, Depth::bits8), output,
                    {2, input[static_cast<std::size_t>(i)], {110.0, 20.0}, false, 99.0});
  }
}

TEST(SubRectangle, IsAllThatIsMeasuredButEverythingIsCorrected) {
  const Depth depth = Depth::bits8;
  Scene scene{{200, 150, kFrames}, depth};
  scene.fx.param("Number of smoothing frames").set(2);
  scene.fx.param("Analyze within sub-rectangle").set(1);
  // Corners in either order.
  scene.fx.param("1st sub-rectangle corner").set(host::Point{170.0, 130.0});
  scene.fx.param("2nd sub-rectangle corner").set(host::Point{20.0, 10.0});
  scene.fx.param("Speed (1=accurate, 5=fast)").set(2);
  scene.fx.press("Analyze");
  const Area area{20, 10, 170, 130};
  ASSERT_EQ(samplingStep(2, area), 2);
  const auto input = measureAll(scene.footage, area, 2, false, depth);
  const auto desired = smooth(input, 2);
  for (std::int32_t i = 0; i < kFrames; ++i) {
    const auto n = static_cast<std::size_t>(i);
    EXPECT_EQ(savedData(scene.fx).level(0, i), input[n].luminance);
    Image output;
    scene.fx.render(i, depth, output);
    expectCorrected(scene.footage.frame(i, depth), output, {1, input[n], desired[n], false, 99.0});
  }
}

TEST(DontDeflicker, LeavesItsFramesAloneBitForBit) {
  for (const Depth depth : {Depth::bits8, Depth::bits16, Depth::float32}) {
    for (const RenderPath path : {RenderPath::smart, RenderPath::classic}) {
      if (depth == Depth::float32 && path == RenderPath::classic) continue;
      Scene scene{kSize, depth};
      scene.fx.param("Number of smoothing frames").set(2);
      scene.fx.param("Don't deflicker").setAt(0, 0);
      scene.fx.param("Don't deflicker").setAt(3, 1);
      scene.fx.param("Don't deflicker").setAt(6, 0);
      scene.fx.press("Analyze");
      auto input = measureAll(scene.footage, kWhole, 1, false, depth);
      // Frames passed over are not measured and take no part in the averages.
      for (std::size_t n = 3; n < 6; ++n) input[n] = {};
      const auto desired = smooth(input, 2);
      for (std::int32_t i = 0; i < kFrames; ++i) {
        const auto n = static_cast<std::size_t>(i);
        Image output;
        scene.fx.render(i, depth, output, path);
        const Image original = scene.footage.frame(i, depth);
        if (i >= 3 && i < 6) {
          SCOPED_TRACE(i);
          expectSame(original, output);
        } else {
          expectCorrected(original, output, {1, input[n], desired[n], false, 99.0});
        }
      }
    }
  }
}

TEST(FavorBrighter, WeighsByBrightness) {
  Scene scene{kSize};
  scene.fx.param("Favor brighter pixels").set(1);
  scene.fx.press("Analyze");
  const auto input = measureAll(scene.footage, kWhole, 1, true, Depth::bits8);
  const SavedData saved = savedData(scene.fx);
  for (std::int32_t i = 0; i < kFrames; ++i) {
    EXPECT_EQ(saved.level(0, i), input[static_cast<std::size_t>(i)].luminance);
    EXPECT_EQ(saved.level(1, i), input[static_cast<std::size_t>(i)].spread);
  }
}

}  // namespace
}  // namespace effect_test
