// tests/ui/histogram_current_frame_test.cpp — the frame in hand, from either kind of host.
#include "analysis/histogram_current_frame.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/ui/recording_host.h"

namespace varilum::test {
namespace {

using ::testing::Contains;
using ::testing::Not;

// A frame of 200 x 100 pixels of level 90, not measured yet.
class FrameInHand : public ::testing::TestWithParam<bool> {
 protected:
  FrameInHand() { host_.global.isAfterEffects = GetParam() ? 1 : 0; }

  RecordingHost host_;
};

TEST_P(FrameInHand, IsMeasuredWhenThePanelNeedsIt) {
  EXPECT_EQ(host_.send(PF_Event_DRAW), 0);
  const FrameStats& stats = host_.state().currentStats;
  EXPECT_EQ(stats.frame, 2);
  EXPECT_EQ(stats.analyzed, 1);
  EXPECT_EQ(stats.walked, 0);
  EXPECT_GE(stats.slot, 0);
  EXPECT_EQ(stats.pixelCount, 20000);
  EXPECT_EQ(double{stats.inputLuminance}, 90.0);
  EXPECT_EQ(host_.state().currentHistogram.frame, 2);
  EXPECT_EQ(host_.state().currentHistogram.luminance[90], 20000U);
  EXPECT_EQ(host_.levels().inputLuminance()[2], 90.0);
  EXPECT_EQ(host_.levels().inputSpread()[2], 0.0);
  EXPECT_EQ(host_.levels().inputLuminance()[1], -1.0);
  // Smoothing over the only frame that is known.
  EXPECT_EQ(host_.levels().desiredLuminance()[2], 90.0);
  EXPECT_EQ(double{host_.state().frameDesiredLuminance}, 90.0);
  EXPECT_EQ(double{host_.state().currentDesired}, 90.0);
  EXPECT_EQ(host_.state().recomputeDesired, 0);
  EXPECT_EQ(host_.state().useCounter, 1U);
  EXPECT_EQ(host_.state().histogramSource, 1);
  EXPECT_EQ(host_.stored(2).first.analyzed, 1);
  EXPECT_EQ(host_.stored(2).second.luminance[90], 20000U);
  EXPECT_THAT(host_.texts(), Contains("20000 of 20000 pixels analyzed"));
  EXPECT_THAT(host_.texts(), Contains("Input = 90.00 "));
}

TEST_P(FrameInHand, IsMeasuredOnce) {
  host_.send(PF_Event_DRAW);
  const int checkouts = host_.calls["checkout_param"];
  host_.send(PF_Event_DRAW);
  EXPECT_EQ(host_.calls["checkout_param"], checkouts);
  EXPECT_EQ(host_.state().useCounter, 1U);
  EXPECT_EQ(host_.state().redrawCounter, 1);
}

TEST_P(FrameInHand, ComesFromTheStoreWhenItIsThere) {
  host_.send(PF_Event_DRAW);
  host_.in.current_time = 30;
  host_.setPicture(200, 100, 50);
  host_.send(PF_Event_DRAW);
  EXPECT_EQ(host_.state().useCounter, 2U);
  host_.in.current_time = 20;
  host_.send(PF_Event_DRAW);
  EXPECT_EQ(host_.state().useCounter, 2U);
  EXPECT_EQ(host_.state().currentHistogram.luminance[90], 20000U);
  EXPECT_EQ(host_.state().redrawCounter, 3);
}

TEST_P(FrameInHand, IsMeasuredBetweenTheCornersAtItsTime) {
  host_.param(PARAM_USE_SUBRECT).u.bd.value = 1;
  host_.param(PARAM_CORNER1).u.td.x_value = 150 << 16;
  host_.param(PARAM_CORNER1).u.td.y_value = 90 << 16;
  host_.param(PARAM_CORNER2).u.td.x_value = 50 << 16;
  host_.param(PARAM_CORNER2).u.td.y_value = 20 << 16;
  host_.in.current_time = 25;
  host_.send(PF_Event_DRAW);
  EXPECT_EQ(host_.state().currentStats.pixelCount, 7000);
  EXPECT_EQ(host_.state().currentStats.rect, (Rect{50, 20, 150, 90}));
  EXPECT_THAT(host_.checkouts, Contains(std::pair<std::int32_t, std::int32_t>{PARAM_CORNER1, 20}));
}

TEST_P(FrameInHand, AnEmptyRectangleCountsAsAnalysed) {
  host_.param(PARAM_USE_SUBRECT).u.bd.value = 1;
  host_.send(PF_Event_DRAW);
  EXPECT_EQ(host_.state().currentStats.analyzed, 1);
  EXPECT_EQ(host_.state().currentStats.pixelCount, 0);
  EXPECT_THAT(host_.texts(), Contains("Analysis rectangle is empty!"));
}

TEST_P(FrameInHand, NeedsPixels) {
  host_.world.data = nullptr;
  EXPECT_EQ(host_.send(PF_Event_DRAW), 0);
  EXPECT_EQ(host_.state().currentStats.frame, -1);
  EXPECT_EQ(host_.levels().inputLuminance()[2], -1.0);
  EXPECT_EQ(host_.state().histogramSource, 0);
  EXPECT_THAT(host_.texts(), Contains("Calculating histogram..."));
}

TEST_P(FrameInHand, IsNotMeasuredOutsideTheLayer) {
  host_.in.current_time = 50;
  host_.send(PF_Event_DRAW);
  host_.in.current_time = -10;
  host_.send(PF_Event_DRAW);
  EXPECT_EQ(host_.state().useCounter, 0U);
  EXPECT_TRUE(host_.checkouts.empty());
}

TEST_P(FrameInHand, EveryRefusalLeavesNothingBehind) {
  int count = 0;
  {
    RecordingHost& clean = host_;
    clean.send(PF_Event_DRAW);
    count = clean.calls["checkout_param"];
    clean.state().currentStats.slot = -1;
  }
  for (int n = 1; n <= count; ++n) {
    host_.state().currentStats.slot = -1;
    host_.refused = false;
    host_.refuse("checkout_param", n, 21);
    EXPECT_EQ(host_.send(PF_Event_DRAW), 0) << n;
    EXPECT_TRUE(host_.refused);
    EXPECT_EQ(host_.outstanding(), 0) << n;
  }
}

INSTANTIATE_TEST_SUITE_P(EitherHost, FrameInHand, ::testing::Bool(), [](const auto& kind) {
  return kind.param ? "AfterEffects" : "OtherHosts";
});

std::int32_t measureRendered(RecordingHost& host) {
  return histogramCurrentFrameRendered(host.in, host.out, host.params(), host.global, host.event);
}

TEST(RenderedFrame, IsWaitedFor) {
  for (const auto ready : {RecordingHost::Ready::noReceipt, RecordingHost::Ready::noWorld}) {
    RecordingHost host;
    host.ready = ready;
    EXPECT_EQ(measureRendered(host), 0);
    EXPECT_EQ(host.outstanding(), 0);
    EXPECT_EQ(host.state().currentStats.frame, -1);
    host.ready = RecordingHost::Ready::yes;
    EXPECT_EQ(measureRendered(host), 0);
    EXPECT_EQ(host.state().currentStats.frame, 2);
  }
}

TEST(RenderedFrame, ReturnsTheFirstErrorAndGivesAllBack) {
  for (const char* function :
       {"PF_GetContextAsyncManager", "AEGP_GetNewEffectForEffect", "AEGP_NewFromUpstreamOfEffect",
        "AEGP_CheckoutOrRender", "AEGP_GetReceiptWorld", "AEGP_FillOutPFEffectWorld",
        "PF_GetPixelFormat"}) {
    RecordingHost host;
    host.refuse(function, 1, 88);
    EXPECT_EQ(measureRendered(host), 88) << function;
    EXPECT_EQ(host.outstanding(), 0) << function;
    EXPECT_EQ(host.state().currentStats.frame, -1) << function;
  }
}

TEST(RenderedFrame, ThrowsForAMissingSuite) {
  for (int n = 1; n <= 8; ++n) {
    RecordingHost host;
    host.refuse("AcquireSuite", n);
    EXPECT_THROW(measureRendered(host), std::int32_t) << n;
    EXPECT_EQ(host.outstanding(), 0) << n;
  }
}

TEST(RenderedFrame, ThePanelDrawsOnWithoutIt) {
  RecordingHost host;
  host.refuse("AcquireSuite", 4 + 1 + 1 + 3);  // after those of the drawing
  EXPECT_EQ(host.send(PF_Event_DRAW), 0);
  EXPECT_TRUE(host.refused);
  EXPECT_THAT(host.texts(), Contains("Calculating histogram..."));
}

TEST(RenderedFrame, TheNextFramesStatisticsAreTrusted) {
  RecordingHost host;
  host.analyze();
  host.state().currentStats.frame = 2;
  host.in.current_time = 10;
  // A record stored under another number, as an image may hold.
  FrameStats stats = host.state().currentStats;
  FrameHistogram histogram = host.state().currentHistogram;
  storeFrameStats(host.in, host.state(), 1, stats, histogram);
  host.send(PF_Event_DRAW);
  EXPECT_EQ(host.state().currentStats.frame, 2);
  EXPECT_EQ(host.state().useCounter, 0U);
  EXPECT_EQ(host.state().histogramSource, 0);
}

TEST(RenderedFrame, IsNotClampedToTheLayer) {
  RecordingHost host;
  for (const std::int32_t time : {-10, 50}) {
    host.in.current_time = time;
    EXPECT_EQ(measureRendered(host), 0);
    EXPECT_EQ(host.state().currentStats.frame, -1);
  }
}

TEST(RenderedFrame, LeavesBrightPixelsTheirWeight) {
  RecordingHost host;
  host.param(PARAM_FAVOR_BRIGHTER).u.bd.value = 1;
  for (std::int32_t i = 0; i < 10000; ++i) host.world.data[i] = {255, 0, 0, 0};
  EXPECT_EQ(measureRendered(host), 0);
  EXPECT_EQ(host.levels().inputLuminance()[2], 45.0);
}

TEST(RenderedFrame, TakesItsDepthFromTheHost) {
  RecordingHost host;
  // 100 x 100 pixels of 16 bits, seen as 8-bit ones of twice the width before.
  host.world.width = 100;
  host.world.rowbytes = 800;
  host.world.world_flags = PF_WorldFlag_DEEP;
  host.worldFormat = PF_PixelFormat_ARGB64;
  host.state().isFloat = 1;
  auto* channels = reinterpret_cast<std::uint16_t*>(host.world.data);
  std::fill_n(channels, 100 * 100 * 4, std::uint16_t{64 << 7});
  EXPECT_EQ(measureRendered(host), 0);
  EXPECT_EQ(host.state().inputDeep, 1);
  EXPECT_EQ(host.state().isFloat, 0);
  EXPECT_EQ(host.state().currentHistogram.luminance[64], 10000U);
}

TEST(InputFrame, FavorsBrightPixelsOnRequest) {
  RecordingHost host;
  host.param(PARAM_FAVOR_BRIGHTER).u.bd.value = 1;
  for (std::int32_t i = 0; i < 10000; ++i) host.world.data[i] = {255, 0, 0, 0};
  histogramCurrentFrameInput(host.in, host.out, host.params(), host.global, nullptr);
  EXPECT_EQ(host.levels().inputLuminance()[2], 90.0);
}

TEST(InputFrame, IsClampedToTheLayer) {
  RecordingHost host;
  host.in.current_time = 70;
  histogramCurrentFrameInput(host.in, host.out, host.params(), host.global, nullptr);
  EXPECT_EQ(host.state().currentStats.frame, 4);
  EXPECT_THAT(host.checkouts, Contains(std::pair<std::int32_t, std::int32_t>{PARAM_INPUT, 40}));
}

TEST(InputFrame, NotesTheDepthOfBothWorlds) {
  RecordingHost host;
  host.state().isFloat = 1;
  host.state().outputDeep = 1;
  histogramCurrentFrameInput(host.in, host.out, host.params(), host.global, nullptr);
  EXPECT_EQ(host.state().isFloat, 0);
  EXPECT_EQ(host.state().inputDeep, 0);
  EXPECT_EQ(host.state().outputDeep, 0);
  PF_EffectWorld output{};
  output.world_flags = PF_WorldFlag_DEEP;
  host.world.world_flags = PF_WorldFlag_DEEP;
  host.world.width = 100;
  histogramCurrentFrameInput(host.in, host.out, host.params(), host.global, &output);
  EXPECT_EQ(host.state().inputDeep, 1);
  EXPECT_EQ(host.state().outputDeep, 1);
}

TEST(InputFrame, AsksForAnAnalysisWhenNobodyIsThere) {
  RecordingHost host;
  histogramCurrentFrameInput(host.in, host.out, host.params(), host.global, nullptr);
  EXPECT_EQ(host.state().refreshPending, 0);
  host.global.renderEngine = 1;
  host.state().analysisComplete = 1;
  histogramCurrentFrameInput(host.in, host.out, host.params(), host.global, nullptr);
  EXPECT_EQ(host.state().refreshPending, 0);
  host.state().analysisComplete = 0;
  histogramCurrentFrameInput(host.in, host.out, host.params(), host.global, nullptr);
  EXPECT_EQ(host.state().refreshPending, 1);
}

TEST(InputFrame, TakesNoHostSuite) {
  RecordingHost host;
  histogramCurrentFrameInput(host.in, host.out, host.params(), host.global, nullptr);
  EXPECT_EQ(host.calls["AcquireSuite"], 0);
}

}  // namespace
}  // namespace varilum::test
