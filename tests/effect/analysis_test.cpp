// tests/effect/analysis_test.cpp — pressing Analyze: what is stored, shown, cancelled and refused.
#include <gtest/gtest.h>

#include "host/error.h"
#include "tests/effect/reference_model.h"
#include "tests/effect/test_footage.h"
#include "tests/host/recording_listener.h"

namespace effect_test {
namespace {

using host::Depth;
using host::Instance;

constexpr std::size_t kAnalysisComplete = 97;
constexpr std::size_t kRecompute = 98;
constexpr std::size_t kRefreshPending = 100;
constexpr std::size_t kStatusText = 357;

std::string statusText(const SavedData& saved) {
  return reinterpret_cast<const char*>(saved.bytes.data() + kStatusText);
}

TEST(Analyze, StoresEveryFramesLevels) {
  for (const Depth depth : {Depth::bits8, Depth::bits16, Depth::float32}) {
    TestFootage footage = flickeringFootage(120, 80, 35, depth);
    Visit visit;
    Instance fx{visit.effect(), footage};
    fx.press("Analyze");
    const SavedData saved = savedData(fx);
    ASSERT_EQ(saved.frameCount(), 35);
    ASSERT_EQ(saved.bytes.size(), 5196u + 208u * 35u + 123000u);
    EXPECT_EQ(saved.byteAt(kAnalysisComplete), 1);
    EXPECT_EQ(saved.byteAt(kRecompute), 0);
    EXPECT_EQ(saved.byteAt(kRefreshPending), 0);
    EXPECT_EQ(statusText(saved), "35 of 35 frames analyzed");
    std::vector<Levels> input;
    for (std::int32_t i = 0; i < 35; ++i) {
      input.push_back(measure(footage.frame(i, depth), {0, 0, 120, 80}, 1, false));
      EXPECT_EQ(saved.level(0, i), input.back().luminance) << "frame " << i;
      EXPECT_NEAR(saved.level(1, i), input.back().spread, 1e-12 * 255) << "frame " << i;
      EXPECT_TRUE(saved.analyzed(i));
    }
    const auto desired = smooth(input, 30);
    for (std::int32_t i = 0; i < 35; ++i) {
      const auto n = static_cast<std::size_t>(i);
      EXPECT_DOUBLE_EQ(saved.level(2, i), desired[n].luminance);
      EXPECT_FLOAT_EQ(static_cast<float>(saved.level(3, i)), static_cast<float>(desired[n].spread));
    }
  }
}

TEST(Analyze, ShowsProgressOneFrameAheadAndTheStatusInTheInfoPanel) {
  TestFootage footage = flickeringFootage(80, 64, 4, Depth::bits8);
  Visit visit;
  RecordingListener listener;
  visit.host().setListener(&listener);
  {
    Instance fx{visit.effect(), footage};
    fx.press("Analyze");
  }
  const std::vector<std::pair<std::int32_t, std::int32_t>> steps{{2, 4}, {3, 4}, {4, 4}, {5, 4}};
  EXPECT_EQ(listener.steps, steps);
  ASSERT_EQ(listener.infoLines.size(), 4u);
  EXPECT_EQ(listener.infoLines.front().first, "1 of 4 frames analyzed");
  EXPECT_EQ(listener.infoLines.back().first, "4 of 4 frames analyzed");
  EXPECT_EQ(listener.infoLines.back().second, "");
  EXPECT_TRUE(listener.shown().empty());
  visit.host().setListener(nullptr);
}

TEST(Analyze, FramesPassedOverSendNoProgressAfterTheFirst) {
  TestFootage footage = flickeringFootage(80, 64, 4, Depth::bits8);
  Visit visit;
  RecordingListener listener;
  visit.host().setListener(&listener);
  {
    Instance fx{visit.effect(), footage};
    fx.param("Don't deflicker").set(1);
    fx.press("Analyze");
    const SavedData saved = savedData(fx);
    for (std::int32_t i = 0; i < 4; ++i) {
      EXPECT_TRUE(saved.analyzed(i));
      EXPECT_EQ(saved.level(0, i), 0.0);
      EXPECT_EQ(saved.level(1, i), 0.0);
    }
    EXPECT_EQ(saved.byteAt(kAnalysisComplete), 1);
  }
  ASSERT_EQ(listener.steps.size(), 1u);
  EXPECT_EQ(listener.steps[0], (std::pair<std::int32_t, std::int32_t>{2, 4}));
  EXPECT_EQ(listener.infoLines.size(), 4u);
  visit.host().setListener(nullptr);
}

TEST(Analyze, CancelKeepsWhatWasDoneAndComputesTargets) {
  TestFootage footage = flickeringFootage(80, 64, 10, Depth::bits8);
  Visit visit;
  RecordingListener listener;
  listener.stopAtStep = 4;
  visit.host().setListener(&listener);
  {
    Instance fx{visit.effect(), footage};
    EXPECT_THROW(fx.press("Analyze"), host::Cancelled);
    const SavedData saved = savedData(fx);
    EXPECT_EQ(saved.byteAt(kAnalysisComplete), 0);
    EXPECT_EQ(saved.byteAt(kRefreshPending), 0);
    EXPECT_EQ(saved.byteAt(kRecompute), 0);
    for (std::int32_t i = 0; i < 10; ++i) {
      EXPECT_EQ(saved.analyzed(i), i < 4) << "frame " << i;
      EXPECT_EQ(saved.level(0, i) == -1.0, i >= 4) << "frame " << i;
    }
    EXPECT_GT(saved.level(2, 0), 0.0);
    EXPECT_EQ(statusText(saved), "4 of 10 frames analyzed");

    // A second run starts from nothing and completes.
    listener.stopAtStep = RecordingListener::kNeverStop;
    fx.press("Analyze");
    EXPECT_EQ(savedData(fx).byteAt(kAnalysisComplete), 1);
  }
  visit.host().setListener(nullptr);
}

TEST(Analyze, AnEmptySubRectangleLeavesTheLayerUnanalysed) {
  TestFootage footage = flickeringFootage(80, 64, 3, Depth::bits8);
  Visit visit;
  Instance fx{visit.effect(), footage};
  fx.param("Analyze within sub-rectangle").set(1);
  fx.param("1st sub-rectangle corner").set(host::Point{40.0, 30.0});
  fx.param("2nd sub-rectangle corner").set(host::Point{40.0, 60.0});
  fx.press("Analyze");
  const SavedData saved = savedData(fx);
  EXPECT_EQ(saved.byteAt(kAnalysisComplete), 0);
  for (std::int32_t i = 0; i < 3; ++i) {
    EXPECT_FALSE(saved.analyzed(i));
    EXPECT_EQ(saved.level(0, i), 0.0);
  }
}

TEST(Analyze, FailingFootageIsTheUsersError) {
  TestFootage footage(40, 40, 5, Depth::bits8, [](auto frame, auto, auto) -> Pixel {
    if (frame == 3) throw std::runtime_error("frame 3 cannot be decoded");
    return {1.0, 0.5, 0.5, 0.5};
  });
  Visit visit;
  Instance fx{visit.effect(), footage};
  EXPECT_THROW(fx.press("Analyze"), std::runtime_error);
  const SavedData saved = savedData(fx);
  EXPECT_EQ(saved.byteAt(kAnalysisComplete), 0);
  EXPECT_TRUE(saved.analyzed(2));
  EXPECT_FALSE(saved.analyzed(3));
}

TEST(Analyze, AOneFrameLayerIsItsOwnTarget) {
  TestFootage footage = flickeringFootage(80, 64, 1, Depth::bits8);
  Visit visit;
  Instance fx{visit.effect(), footage};
  fx.press("Analyze");
  const SavedData saved = savedData(fx);
  EXPECT_EQ(saved.level(2, 0), saved.level(0, 0));
  host::Image out;
  fx.render(0, Depth::bits8, out);
  const host::Image in = footage.frame(0, Depth::bits8);
  for (std::int32_t y = 0; y < 64; ++y) {
    for (std::int32_t x = 0; x < 80; ++x) {
      ASSERT_EQ(getPixel(in, x, y).green, getPixel(out, x, y).green);
    }
  }
}

TEST(Clear, ForgetsTheAnalysis) {
  TestFootage footage = flickeringFootage(80, 64, 5, Depth::bits8);
  Visit visit;
  Instance fx{visit.effect(), footage};
  fx.press("Analyze");
  EXPECT_EQ(fx.param("Needs Analyze").value(), 1.0);
  const double counter = fx.param("Counter").value();
  EXPECT_GT(counter, 0.0);
  fx.press("Clear");
  EXPECT_EQ(fx.param("Needs Analyze").value(), 0.0);
  EXPECT_EQ(fx.param("Counter").value(), counter + 1.0);
  const SavedData saved = savedData(fx);
  EXPECT_EQ(saved.byteAt(kAnalysisComplete), 0);
  EXPECT_EQ(statusText(saved), "0 of 5 frames analyzed");
  for (int array = 0; array < 4; ++array) EXPECT_EQ(saved.level(array, 2), -1.0);
}

TEST(Edits, OfTheMeasurementAskForANewAnalysisAndKeepTheInput) {
  TestFootage footage = flickeringFootage(80, 64, 5, Depth::bits8);
  Visit visit;
  Instance fx{visit.effect(), footage};
  fx.press("Analyze");
  const double before = savedData(fx).level(0, 2);
  fx.param("Speed (1=accurate, 5=fast)").set(3);
  EXPECT_EQ(fx.param("Needs Analyze").value(), 0.0);
  const SavedData saved = savedData(fx);
  EXPECT_EQ(saved.byteAt(kAnalysisComplete), 0);
  EXPECT_EQ(saved.level(0, 2), before);
  EXPECT_FALSE(saved.analyzed(2));
}

TEST(Edits, OfTheTargetsAreComputedAtOnce) {
  TestFootage footage = flickeringFootage(80, 64, 12, Depth::bits8);
  Visit visit;
  Instance fx{visit.effect(), footage};
  fx.press("Analyze");
  std::vector<Levels> input;
  const SavedData first = savedData(fx);
  for (std::int32_t i = 0; i < 12; ++i) input.push_back({first.level(0, i), first.level(1, i)});
  for (const std::int32_t n : {1, 2, 5, 60}) {
    fx.param("Number of smoothing frames").set(n);
    const auto desired = smooth(input, n);
    const SavedData saved = savedData(fx);
    for (std::int32_t i = 0; i < 12; ++i) {
      EXPECT_DOUBLE_EQ(saved.level(2, i), desired[static_cast<std::size_t>(i)].luminance)
          << n << " frames, frame " << i;
    }
  }
}

TEST(Counter, WrapsAtTheTopOfItsRange) {
  TestFootage footage = flickeringFootage(40, 40, 2, Depth::bits8);
  Visit visit;
  Instance fx{visit.effect(), footage};
  host::SavedParameter counter;
  counter.id = 33;
  counter.type = PF_Param_FLOAT_SLIDER;
  counter.keys.push_back({0, 63999.0, 0.0, {}});
  fx.load(counter);
  fx.param("Correction method").set(2);
  EXPECT_EQ(fx.param("Counter").value(), 64000.0);
  fx.param("Correction method").set(3);
  EXPECT_EQ(fx.param("Counter").value(), 0.0);
}

}  // namespace
}  // namespace effect_test
