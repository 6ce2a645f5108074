// tests/ui/histogram_graph_test.cpp — texts, channels and notices of the upper graph.
#include "ui/histogram_graph.h"

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

// The texts of the upper graph, in order, without the title.
std::vector<std::string> upperTexts(const RecordingHost& host) {
  std::vector<std::string> texts = host.texts();
  EXPECT_EQ(texts.front(), "Histogram Graph");
  const auto end = std::find(texts.begin(), texts.end(), "Luminance Graph");
  return {texts.begin() + 1, end};
}

std::string describedText(const RecordingHost& host, const std::string& text) {
  for (const Primitive& primitive : host.drawn) {
    if (primitive.kind == Kind::text && primitive.text == text) return primitive.describe();
  }
  return "none";
}

TEST(HistogramGraph, DrawsChannelsOnRequestOverTheLuminance) {
  RecordingHost host;
  host.analyze();
  host.state().currentHistogram.green[50] = 50;
  host.param(PARAM_SHOW_GREEN).u.bd.value = 1;
  host.send(PF_Event_DRAW);
  const auto green = host.marks(Kind::stroke, color::kGreen);
  // The desired curve of the lower graph has the same colour.
  ASSERT_EQ(green.size(), 2U);
  ASSERT_EQ(green[0].points.size(), 258U);
  EXPECT_EQ(green[0].points[51].y, 102.0F);  // half of the luminance's peak: 68 of 137
  EXPECT_TRUE(host.marks(Kind::stroke, color::kBlue).empty());
  EXPECT_EQ(host.marks(Kind::fill, color::kGreen).size(), 0U);
}

TEST(HistogramGraph, DrawsRedGreenAndBlueInThisOrder) {
  RecordingHost host;
  host.analyze();
  for (const std::int32_t index : {PARAM_SHOW_RED, PARAM_SHOW_GREEN, PARAM_SHOW_BLUE}) {
    host.param(index).u.bd.value = 1;
  }
  host.send(PF_Event_DRAW);
  EXPECT_EQ(host.drawn[5].describe(), "fill (1 1 1) rule 0 258 points");
  EXPECT_EQ(host.drawn[6].describe(), "stroke (0.7333 0 0) 1 258 points");
  EXPECT_EQ(host.drawn[7].describe(), "stroke (0 0.7333 0) 1 258 points");
  EXPECT_EQ(host.drawn[8].describe(), "stroke (0 0 0.7333) 1 258 points");
}

TEST(HistogramGraph, ShiftTellsTheSpreads) {
  RecordingHost host;
  host.analyze();
  host.param(PARAM_CORRECTION_METHOD).u.pd.value = 2;
  host.send(PF_Event_DRAW);
  EXPECT_EQ(host.state().correctionMethod, 2);
  EXPECT_THAT(upperTexts(host),
              ElementsAre("Input = 120.00, spread = 12.50 ", "Desired = 125.00, spread = 11.25 ",
                          "frame 2", "1000 of 2000 pixels analyzed", "90% unclipped"));
}

TEST(HistogramGraph, TellsOfClippingAboveAHundredthOfAPercent) {
  RecordingHost host;
  host.analyze();
  host.state().currentStats.pixelCount = 10000;
  host.state().currentHistogram.red[255] = 1;    // 0.01 %: not shown
  host.state().currentHistogram.green[255] = 2;  // 0.02 %
  host.state().currentHistogram.blue[255] = 10000;
  host.send(PF_Event_DRAW);
  // 21 characters: 359 - (63 - 3) x 2; 20 characters: 359 - (60 - 3) x 2
  EXPECT_EQ(describedText(host, "0.02  % green clipped"),
            "text (0 0.7333 0) 239,44 '0.02  % green clipped'");
  EXPECT_EQ(describedText(host, "100.00% blue clipped"),
            "text (0 0 0.7333) 245,54 '100.00% blue clipped'");
  EXPECT_THAT(host.texts(), Not(Contains("0.01  % red clipped")));
}

TEST(HistogramGraph, AFrameWithoutPixelsIsBeingCalculated) {
  RecordingHost host;
  host.analyze();
  host.state().currentStats.pixelCount = 0;
  host.send(PF_Event_DRAW);
  EXPECT_EQ(describedText(host, "Calculating histogram..."),
            "text (0.6667 0.8667 0) 20,44 'Calculating histogram...'");
  EXPECT_EQ(describedText(host, "Analysis rectangle is empty!"),
            "text (0.6667 0.8667 0) 359,54 'Analysis rectangle is empty!'");
  EXPECT_EQ(describedText(host, "histIn->count = 0"),
            "text (0.6667 0.8667 0) 359,64 'histIn->count = 0'");
}

TEST(HistogramGraph, AFramePassedOverSaysSo) {
  RecordingHost host;
  host.analyze();
  host.state().currentStats.pixelCount = 0;
  host.param(PARAM_DONT_DEFLICKER).u.bd.value = 1;
  host.in.current_time = 25;
  host.send(PF_Event_DRAW);
  EXPECT_THAT(upperTexts(host), ElementsAre("Don't deflicker this frame", "frame 2",
                                            "Analysis rectangle is empty!", "histIn->count = 0"));
  EXPECT_THAT(host.checkouts, ElementsAre(std::pair{15, 25}));
}

TEST(HistogramGraph, FailingToAskForThatIsTheDrawsError) {
  RecordingHost host;
  host.analyze();
  host.state().currentStats.pixelCount = 0;
  host.refuse("checkout_param", 1, 33);
  EXPECT_EQ(host.send(PF_Event_DRAW), 33);
}

TEST(HistogramGraph, APictureOfNoSizeKeepsItsPercentage) {
  RecordingHost host;
  host.analyze();
  host.state().currentStats.totalPixels = 0;
  host.send(PF_Event_DRAW);
  EXPECT_THAT(upperTexts(host), ElementsAre("Input = 120.00", "Desired = 125.00", "frame 2",
                                            "Analysis rectangle is empty!", "90% unclipped"));
  EXPECT_EQ(describedText(host, "90% unclipped"), "text (0.6667 0.8667 0) 359,64 '90% unclipped'");
}

TEST(HistogramGraph, IsEmptyOutsideTheLayer) {
  for (const auto& [time, label] : {std::pair{-30, "frame -3"}, std::pair{70, "frame 7"}}) {
    RecordingHost host;
    host.analyze();
    host.state().inputMarkerRect = {1, 2, 3, 4};
    host.in.current_time = time;
    EXPECT_EQ(host.send(PF_Event_DRAW), 0);
    EXPECT_THAT(upperTexts(host), ElementsAre(label));
    EXPECT_TRUE(host.marks(Kind::stroke, color::kOutline).empty());
    EXPECT_TRUE(host.marks(Kind::stroke, color::kTimeLine).empty());
    EXPECT_EQ(host.state().inputMarkerRect, (Rect{1, 2, 3, 4}));
    EXPECT_TRUE(host.checkouts.empty());
  }
}

}  // namespace
}  // namespace varilum::test
