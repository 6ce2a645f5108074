// tests/ui/luminance_graph_test.cpp — curves, labels and memory of the lower graph.
#include "ui/luminance_graph.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/ui/recording_host.h"
#include "ui/panel_colors.h"

namespace varilum::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;
using Kind = Primitive::Kind;

std::vector<std::string> describe(const std::vector<Primitive>& primitives) {
  std::vector<std::string> result;
  for (const Primitive& primitive : primitives) result.push_back(primitive.describe());
  return result;
}

// An analysed layer with these input levels.
void setInputs(RecordingHost& host, const std::vector<double>& levels) {
  host.analyze();
  const LevelLocks locks = host.levels();
  ASSERT_EQ(locks.inputLuminance().size(), levels.size());
  std::copy(levels.begin(), levels.end(), locks.inputLuminance().begin());
}

TEST(LuminanceGraph, LeavesGapsAndShowsLoneFrames) {
  RecordingHost host;
  setInputs(host, {127.5, -1.0, 127.5, 255.0, -1.0});
  host.send(PF_Event_DRAW);
  EXPECT_THAT(describe(host.marks(Kind::stroke, color::kInput)),
              ElementsAre("stroke (0.8667 0.8667 0) 1 19,260 103,260",
                          "stroke (0.8667 0.8667 0) 1 187,260 271,193"));
}

TEST(LuminanceGraph, ALoneLastFrameIsOnePixel) {
  RecordingHost host;
  setInputs(host, {-1.0, -1.0, -1.0, -1.0, 127.5});
  host.send(PF_Event_DRAW);
  EXPECT_THAT(describe(host.marks(Kind::stroke, color::kInput)),
              ElementsAre("stroke (0.8667 0.8667 0) 1 355,260 356,260"));
}

TEST(LuminanceGraph, AOneFrameLayerStandsAtTheLeftEdge) {
  RecordingHost host{1, 0};
  setInputs(host, {127.5});
  host.send(PF_Event_DRAW);
  EXPECT_THAT(describe(host.marks(Kind::stroke, color::kInput)),
              ElementsAre("stroke (0.8667 0.8667 0) 1 19,260 20,260"));
  EXPECT_THAT(describe(host.marks(Kind::stroke, color::kTimeLine)),
              ElementsAre("stroke (0.7333 0 0) 1 19,193 19,327"));
  EXPECT_THAT(host.texts(), Not(Contains(::testing::StartsWith("Input variance"))));
}

TEST(LuminanceGraph, HasNoCurveOfWhatIsNotAnalysed) {
  RecordingHost host;
  setInputs(host, std::vector<double>(5, -1.0));
  host.send(PF_Event_DRAW);
  EXPECT_TRUE(host.marks(Kind::stroke, color::kInput).empty());
  EXPECT_EQ(host.marks(Kind::stroke, color::kDesiredCurve).size(), 1U);
  EXPECT_EQ(double{host.state().inputVariance}, 0.0);
}

TEST(LuminanceGraph, ZoomsOnRequest) {
  RecordingHost host;
  setInputs(host, {100.3, 110.0, 120.0, 130.0, 140.7});
  host.param(PARAM_ZOOM_LUMINANCE).u.bd.value = 1;
  host.send(PF_Event_DRAW);
  EXPECT_THAT(host.texts(), Contains("150   "));
  EXPECT_THAT(host.texts(), Contains("80    "));
  const auto curve = host.marks(Kind::stroke, color::kDesiredCurve);
  ASSERT_EQ(curve.size(), 1U);
  EXPECT_FLOAT_EQ(curve[0].points[0].y, 327.0F - 45.0F * 134.0F / 70.0F);
}

TEST(LuminanceGraph, KeepsBothVariancesAndShowsTheInputs) {
  RecordingHost host;
  setInputs(host, {100.0, 110.0, 90.0, 93.0, -1.0});
  host.levels().desiredLuminance()[4] = 129.0;
  host.send(PF_Event_DRAW);
  EXPECT_DOUBLE_EQ(double{host.state().inputVariance}, 11.0);
  EXPECT_DOUBLE_EQ(double{host.state().outputVariance}, 1.0);
  EXPECT_THAT(host.texts(), Contains("Input variance 11.00 "));
  EXPECT_THAT(host.texts(), Not(Contains(::testing::StartsWith("Output variance"))));
}

TEST(LuminanceGraph, TakesOneBufferForItsPoints) {
  RecordingHost host{100, 3};
  host.analyze();
  const std::size_t before = host.memory.live();
  host.send(PF_Event_DRAW);
  EXPECT_EQ(host.memory.live(), before);
  host.memory.refuseNew(2);
  host.send(PF_Event_DRAW);
  EXPECT_TRUE(host.memory.refusalsPending()) << "only one buffer is asked for";
  host.memory.refuseNew(0);
}

TEST(LuminanceGraph, HasNoCurvesWithoutMemoryForThem) {
  RecordingHost host;
  host.analyze();
  host.memory.refuseNew(1);
  EXPECT_EQ(host.send(PF_Event_DRAW), 0);
  EXPECT_TRUE(host.marks(Kind::stroke, color::kInput).empty());
  EXPECT_TRUE(host.marks(Kind::stroke, color::kDesiredCurve).empty());
  EXPECT_TRUE(host.marks(Kind::stroke, color::kTimeLine).empty());
  const std::vector<std::string> texts = host.texts();
  EXPECT_EQ((std::vector<std::string>{texts.end() - 6, texts.end()}),
            (std::vector<std::string>{"Luminance Graph", "0", "Time in Frames", "5", "255   ",
                                      "0     "}));
}

}  // namespace
}  // namespace varilum::test
