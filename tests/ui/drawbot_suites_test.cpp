// tests/ui/drawbot_suites_test.cpp — suites acquired, refused and given back.
#include "ui/drawbot_suites.h"

#include <gtest/gtest.h>

#include "tests/ui/recording_host.h"

namespace varilum::test {
namespace {

TEST(DrawbotSuites, NeedARecordToFill) {
  RecordingHost host;
  EXPECT_EQ(acquireDrawbotSuites(host.in, host.out, nullptr), 514);
  EXPECT_EQ(host.out.out_flags, 0x100);
  EXPECT_STREQ(host.out.return_msg, "NULL suite pointer passed to AEFX_AcquireDrawbotSuites");
}

TEST(DrawbotSuites, AreAllOrNone) {
  for (int n = 1; n <= 4; ++n) {
    RecordingHost host;
    host.refuse("AcquireSuite", n);
    DrawbotSuites suites;
    EXPECT_EQ(acquireDrawbotSuites(host.in, host.out, &suites), 516);
    EXPECT_EQ(suites.draw, nullptr);
    EXPECT_EQ(host.outstanding(), 0);
    EXPECT_EQ(host.calls["AcquireSuite"], n);
    EXPECT_STREQ(host.out.return_msg, "Not able to acquire AEFX Suite.");
  }
}

TEST(DrawbotSuites, AreGivenBackWhenAllIsWell) {
  RecordingHost host;
  DrawbotSuites suites;
  EXPECT_EQ(acquireDrawbotSuites(host.in, host.out, &suites), 0);
  EXPECT_NE(suites.draw, nullptr);
  EXPECT_NE(suites.supplier, nullptr);
  EXPECT_NE(suites.surface, nullptr);
  EXPECT_NE(suites.path, nullptr);
  EXPECT_EQ(host.outstanding(), 4);
  EXPECT_EQ(releaseDrawbotSuites(host.in, host.out), 0);
  EXPECT_EQ(host.outstanding(), 0);
  EXPECT_EQ(host.out.out_flags, 0);
}

TEST(DrawbotSuites, SayThatNobodyTakesThemBack) {
  RecordingHost host;
  host.in.pica_basicP = nullptr;
  EXPECT_EQ(releaseDrawbotSuites(host.in, host.out), 516);
  EXPECT_EQ(host.out.out_flags, 0x100);
  EXPECT_STREQ(host.out.return_msg, "Not able to release AEFX Suite.");
}

TEST(DrawbotSuites, TellTheCallersMessage) {
  RecordingHost host;
  host.hideSuites = true;
  const void* table = nullptr;
  EXPECT_EQ(acquireSuite(host.in, host.out, "PF World Suite", 2, "No worlds.", &table), 516);
  EXPECT_STREQ(host.out.return_msg, "No worlds.");
  EXPECT_EQ(table, nullptr);
}

TEST(DrawbotSuites, BackgroundChannelsAreFractions) {
  RecordingHost host;
  DRAWBOT_ColorRGBA color{};
  EXPECT_EQ(backgroundColor(host.in, host.out, color), 0);
  EXPECT_EQ(color.red, 1.0F);
  EXPECT_EQ(color.green, 0.0F);
  EXPECT_FLOAT_EQ(color.blue, 0.2F);  // 13107 of 65535
  EXPECT_EQ(color.alpha, 1.0F);
}

}  // namespace
}  // namespace varilum::test
