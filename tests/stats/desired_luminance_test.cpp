// tests/stats/desired_luminance_test.cpp — targets by keyframes and by smoothing.
#include "stats/desired_luminance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <optional>
#include <vector>

#include "tests/stats/random_source.h"

namespace varilum {
namespace {

// Settings by frame, a record of what was asked, and a failure to order.
class Script : public TargetParameters {
 public:
  std::int32_t dontDeflicker(std::int32_t frame, bool& on) override {
    if (ask(frame, 'd')) return kError;
    on = std::find(passed.begin(), passed.end(), frame) != passed.end();
    return 0;
  }
  std::int32_t keyframe(std::int32_t frame, double& luminance, float& spread) override {
    if (ask(frame, 'k')) return kError;
    const auto i = static_cast<std::size_t>(frame);
    if (i < luminances.size() && luminances[i]) luminance = *luminances[i];
    spread = spreadBase + static_cast<float>(frame);
    return 0;
  }
  std::int32_t smoothingFrames(std::int32_t frame, std::int32_t& frames) override {
    if (ask(frame, 's')) return kError;
    frames = static_cast<std::size_t>(frame) < reaches.size()
                 ? reaches[static_cast<std::size_t>(frame)]
                 : reach;
    return 0;
  }

  static constexpr std::int32_t kError = 4711;
  std::vector<std::int32_t> passed;
  std::vector<std::optional<double>> luminances;
  float spreadBase = 0.25f;
  std::int32_t reach = 1;
  std::vector<std::int32_t> reaches;
  std::string asked;
  std::int32_t failAtFrame = -1;
  char failAt = 0;

 private:
  bool ask(std::int32_t frame, char what) {
    asked += what;
    return frame == failAtFrame && what == failAt;
  }
};

struct Levels {
  explicit Levels(std::vector<double> input, std::vector<double> inputSpread)
      : luminance(std::move(input)),
        spread(std::move(inputSpread)),
        desired(luminance.size(), 12345.0),
        desiredSpread(luminance.size(), 12345.0) {}

  LevelArrays arrays() { return {luminance, spread, desired, desiredSpread}; }

  std::vector<double> luminance;
  std::vector<double> spread;
  std::vector<double> desired;
  std::vector<double> desiredSpread;
};

using Doubles = std::vector<double>;

TEST(ComputeDesiredLuminance, SmoothsOverTheWindowShortenedAtTheEnds) {
  Levels levels({10, 20, 30, 40, 50, 60}, {1, 2, 3, 4, 5, 6});
  Script script;
  script.reach = 2;
  EXPECT_EQ(computeDesiredLuminance(script, false, levels.arrays()), 0);
  EXPECT_EQ(levels.desired, (Doubles{20, 25, 30, 40, 45, 50}));
  EXPECT_EQ(levels.desiredSpread, (Doubles{2, 2.5, 3, 4, 4.5, 5}));
  EXPECT_EQ(script.asked, "dsdsdsdsdsds");
}

TEST(ComputeDesiredLuminance, LeavesBlackAndUnanalysedFramesOut) {
  Levels levels({-1, 20, 0, 40, -1, -1, -1}, {0, 2, 0, 0, -1, -1, -1});
  Script script;
  EXPECT_EQ(computeDesiredLuminance(script, false, levels.arrays()), 0);
  EXPECT_EQ(levels.desired, (Doubles{20, 20, 30, 40, 40, -1, -1}));
  EXPECT_EQ(levels.desiredSpread, (Doubles{2, 2, 2, 0, -1, -1, -1}));
}

TEST(ComputeDesiredLuminance, CountsANumberOfFramesBelowOneAsOne) {
  for (const std::int32_t reach : {1, 0, -3, std::numeric_limits<std::int32_t>::min()}) {
    Levels levels({10, 20, 60}, {1, 1, 1});
    Script script;
    script.reach = reach;
    computeDesiredLuminance(script, false, levels.arrays());
    EXPECT_EQ(levels.desired, (Doubles{15, 30, 40})) << reach;
  }
}

TEST(ComputeDesiredLuminance, TakesWindowsLongerThanTheLayer) {
  for (const std::int32_t reach : {2, 3, 1000000, std::numeric_limits<std::int32_t>::max()}) {
    Levels levels({10, 20, 60}, {1, 2, 3});
    Script script;
    script.reach = reach;
    computeDesiredLuminance(script, false, levels.arrays());
    EXPECT_EQ(levels.desired, (Doubles{30, 30, 30})) << reach;
    EXPECT_EQ(levels.desiredSpread, (Doubles{2, 2, 2})) << reach;
  }
}

TEST(ComputeDesiredLuminance, TakesTheNumberOfFramesOfEachFrame) {
  Levels levels({10, 20, 60, 10, 50}, {1, 1, 1, 1, 1});
  Script script;
  script.reaches = {1, 2, 1, 1, 4};
  computeDesiredLuminance(script, false, levels.arrays());
  EXPECT_EQ(levels.desired, (Doubles{15, 25, 30, 40, 30}));
}

TEST(ComputeDesiredLuminance, RoundsSpreadsToSinglePrecision) {
  Levels levels({1, 1, 1}, {0.1, 0.1, 0.2});
  Script script;
  script.passed = {0};
  computeDesiredLuminance(script, false, levels.arrays());
  EXPECT_EQ(levels.desiredSpread[0], static_cast<double>(0.1f));
  EXPECT_EQ(levels.desiredSpread[2], static_cast<double>(static_cast<float>((0.1 + 0.2) / 2)));
}

TEST(ComputeDesiredLuminance, PassesFramesThatMustNotBeDeflickered) {
  Levels levels({10, 20, 90, -1}, {1, 2, 3.5, -1});
  Script script;
  script.passed = {1, 3};
  EXPECT_EQ(computeDesiredLuminance(script, false, levels.arrays()), 0);
  EXPECT_EQ(levels.desired, (Doubles{15, 20, 55, -1}));
  EXPECT_EQ(levels.desiredSpread, (Doubles{1.5, 2, 2.75, -1}));
  EXPECT_EQ(script.asked, "dsddsd");
}

TEST(ComputeDesiredLuminance, FollowsKeyframesAndKeepsTheLastLevelWhereThereIsNone) {
  Levels levels({10, 20, 30, 40, 50}, {1, 2, 3, 4, 5});
  Script script;
  script.luminances = {std::nullopt, 77.0, std::nullopt, std::nullopt, 300.0};
  script.passed = {3};
  EXPECT_EQ(computeDesiredLuminance(script, true, levels.arrays()), 0);
  EXPECT_EQ(levels.desired, (Doubles{0, 77, 77, 40, 300}));
  EXPECT_EQ(levels.desiredSpread, (Doubles{0.25, 1.25, 2.25, 4, 4.25}));
  EXPECT_EQ(script.asked, "dkdkdkddk");
}

TEST(ComputeDesiredLuminance, KeepsThePassedLevelWhereNoKeyframeFollows) {
  Levels levels({10, 20}, {1, 2});
  Script script;
  script.passed = {0};
  EXPECT_EQ(computeDesiredLuminance(script, true, levels.arrays()), 0);
  EXPECT_EQ(levels.desired, (Doubles{10, 10}));
}

TEST(ComputeDesiredLuminance, AsksNoMoreAfterAnErrorButWritesEveryFrame) {
  {
    Levels levels({10, 20, 30, 40, 50, 60}, {1, 1, 1, 1, 1, 1});
    Script script;
    script.reach = 2;
    script.failAtFrame = 2;
    script.failAt = 's';
    EXPECT_EQ(computeDesiredLuminance(script, false, levels.arrays()), Script::kError);
    EXPECT_EQ(script.asked, "dsdsds");
    EXPECT_EQ(levels.desired, (Doubles{20, 25, 30, 40, 45, 50}));  // with the 2 at hand
  }
  {
    Levels levels({10, 20, 30}, {1, 1, 1});
    Script script;
    script.reach = 50;
    script.failAtFrame = 0;
    script.failAt = 'd';
    EXPECT_EQ(computeDesiredLuminance(script, false, levels.arrays()), Script::kError);
    EXPECT_EQ(script.asked, "d");
    EXPECT_EQ(levels.desired, (Doubles{15, 20, 25}));  // never asked: 1 frame each way
  }
  {
    Levels levels({10, 20, 30}, {1, 1, 1});
    Script script;
    script.luminances = {66.0, 67.0, 68.0};
    script.failAtFrame = 1;
    script.failAt = 'k';
    EXPECT_EQ(computeDesiredLuminance(script, true, levels.arrays()), Script::kError);
    EXPECT_EQ(levels.desired, (Doubles{66, 66, 66}));
    EXPECT_EQ(levels.desiredSpread, (Doubles{0.25, 0.25, 0.25}));
  }
  {
    Levels levels({10, 20, 30}, {1, 1, 1});
    Script script;
    script.passed = {0};
    script.failAtFrame = 1;
    script.failAt = 'd';
    EXPECT_EQ(computeDesiredLuminance(script, false, levels.arrays()), Script::kError);
    EXPECT_EQ(levels.desired, (Doubles{10, 20, 30}));  // still passed
  }
}

TEST(ComputeDesiredLuminance, HasNothingToDoWithoutFrames) {
  Levels levels({}, {});
  Script script;
  EXPECT_EQ(computeDesiredLuminance(script, false, levels.arrays()), 0);
  EXPECT_EQ(script.asked, "");
}

TEST(ComputeDesiredLuminance, EqualsThePlainRuleBitForBit) {
  test::RandomSource random;
  for (int round = 0; round < 200; ++round) {
    const std::int32_t count = random.between(1, 300);
    Doubles input;
    Doubles spread;
    Script script;
    const std::int32_t common = random.between(0, 80);
    const bool varying = random.chance(0.3);
    for (std::int32_t i = 0; i < count; ++i) {
      input.push_back(random.chance(0.15) ? random.between(-1, 0) : random.real(0.001, 255));
      spread.push_back(random.chance(0.15) ? random.between(-1, 0) : random.real(0.001, 90));
      script.reaches.push_back(varying && random.chance(0.2) ? random.between(-2, 400) : common);
      if (random.chance(0.05)) script.passed.push_back(i);
    }
    Levels levels(input, spread);
    ASSERT_EQ(computeDesiredLuminance(script, false, levels.arrays()), 0);
    for (std::int64_t i = 0; i < count; ++i) {
      const auto at = static_cast<std::size_t>(i);
      double desired = input[at];
      auto desiredSpread = static_cast<float>(spread[at]);
      if (std::find(script.passed.begin(), script.passed.end(), i) == script.passed.end()) {
        const std::int64_t n = std::max<std::int64_t>(script.reaches[at], 1);
        double sum = 0;
        double spreadSum = 0;
        int used = 0;
        int usedSpread = 0;
        for (std::int64_t j = i - n; j <= i + n; ++j) {
          if (j < 0 || j > count - 1) continue;
          if (input[static_cast<std::size_t>(j)] > 0.0) {
            sum += input[static_cast<std::size_t>(j)];
            ++used;
          }
          if (spread[static_cast<std::size_t>(j)] > 0.0) {
            spreadSum += spread[static_cast<std::size_t>(j)];
            ++usedSpread;
          }
        }
        if (used > 0) desired = sum / used;
        if (usedSpread > 0) desiredSpread = static_cast<float>(spreadSum / usedSpread);
      }
      ASSERT_EQ(levels.desired[at], desired) << "frame " << i << " of " << count;
      ASSERT_EQ(levels.desiredSpread[at], static_cast<double>(desiredSpread)) << i;
    }
    ASSERT_EQ(levels.luminance, input);
    ASSERT_EQ(levels.spread, spread);
  }
}

}  // namespace
}  // namespace varilum
