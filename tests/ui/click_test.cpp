// tests/ui/click_test.cpp — clicks and drags on every part of a drawn panel.
#include "ui/click.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/ui/recording_host.h"

namespace varilum::test {
namespace {

// A panel that was drawn: the input at 120, the desired level at 125.
class Click : public ::testing::Test {
 protected:
  Click() {
    host_.analyze();
    host_.send(PF_Event_DRAW);
    host_.state().recomputeDesired = 0;
    host_.event.evt_out_flags = 0;
  }

  PF_DoClickEventInfo& click() { return host_.event.u.do_click; }
  void clickAt(std::int32_t x, std::int32_t y, bool buttonUp = false) {
    click() = {};
    click().screen_point = {x, y};
    click().continue_refcon[2] = 99;
    click().last_time = buttonUp ? 1 : 0;
    EXPECT_EQ(host_.send(PF_Event_DO_CLICK), 0);
    EXPECT_EQ(host_.event.evt_out_flags, 9);
  }
  void dragTo(std::int32_t x) {
    click().screen_point.h = x;
    host_.event.evt_out_flags = 0;
    EXPECT_EQ(host_.send(PF_Event_DRAG), 0);
  }
  std::int32_t changeFlags(std::int32_t index) { return host_.param(index).uu.change_flags; }
  void expectUntouched() {
    EXPECT_EQ(host_.luminance(), 128.0);
    EXPECT_EQ(changeFlags(PARAM_LUMINANCE), 0);
    EXPECT_EQ(changeFlags(PARAM_SHIFT_SPREAD), 0);
    EXPECT_EQ(host_.state().recomputeDesired, 0);
    EXPECT_FALSE(host_.changedTargets);
  }

  RecordingHost host_;
};

TEST_F(Click, OnTheInputMarkerTakesLevelAndSpread) {
  clickAt(177, 165);
  EXPECT_EQ(click().continue_refcon[2], 1);
  EXPECT_EQ(click().send_drag, 0);
  EXPECT_EQ(host_.luminance(), 120.0);
  EXPECT_EQ(changeFlags(PARAM_LUMINANCE), PF_ChangeFlag_CHANGED_VALUE);
  EXPECT_EQ(host_.param(PARAM_SHIFT_SPREAD).u.fd.value, 819200);  // 12.5
  EXPECT_EQ(changeFlags(PARAM_SHIFT_SPREAD), PF_ChangeFlag_CHANGED_VALUE);
  EXPECT_EQ(double{host_.state().currentDesired}, 120.0);
  EXPECT_EQ(float{host_.state().copiedSpread}, 12.5F);
  EXPECT_EQ(host_.state().recomputeDesired, 1);
  EXPECT_TRUE(host_.changedTargets);
}

TEST_F(Click, SpreadIsRoundedHalfAwayFromZero) {
  host_.state().currentSpread = 1.5F / 65536.0F;
  clickAt(177, 165);
  EXPECT_EQ(host_.param(PARAM_SHIFT_SPREAD).u.fd.value, 2);
  host_.state().currentSpread = -0.5F / 65536.0F;
  clickAt(177, 165);
  EXPECT_EQ(host_.param(PARAM_SHIFT_SPREAD).u.fd.value, -1);
}

TEST_F(Click, EdgesOfTheMarkerAreRightAndBottomExclusive) {
  // The marker's rectangle is 169..186 by 162..171, and the handle's 176..193 by 171..180.
  clickAt(169, 162);
  EXPECT_EQ(click().continue_refcon[2], 1);
  clickAt(185, 170);
  EXPECT_EQ(click().continue_refcon[2], 1);
  clickAt(186, 165);
  EXPECT_EQ(click().continue_refcon[2], 0);
  clickAt(170, 171);
  EXPECT_EQ(click().continue_refcon[2], 0);
}

TEST_F(Click, EdgesOfTheHandleAreRightAndBottomExclusive) {
  clickAt(192, 179);
  EXPECT_EQ(click().continue_refcon[2], 3);
  clickAt(193, 175);
  EXPECT_EQ(click().continue_refcon[2], 0);
  clickAt(180, 180);
  EXPECT_EQ(click().continue_refcon[2], 0);
}

TEST_F(Click, FollowsAPanelThatMovedSinceItWasDrawn) {
  host_.event.effect_win.current_frame = {110, 5, 510, 337};
  clickAt(277, 150);  // 100 to the right, 15 up
  EXPECT_EQ(click().continue_refcon[2], 1);
}

TEST_F(Click, ElsewhereDoesNothing) {
  clickAt(50, 50);
  EXPECT_EQ(click().continue_refcon[2], 0);
  expectUntouched();
}

TEST_F(Click, ElsewhereWithTheButtonUpNudgesTheLevel) {
  clickAt(50, 50, true);
  EXPECT_EQ(host_.luminance(), 128.0 - 0.001);
  EXPECT_EQ(changeFlags(PARAM_LUMINANCE), PF_ChangeFlag_CHANGED_VALUE);
  EXPECT_EQ(changeFlags(PARAM_SHIFT_SPREAD), 0);
  EXPECT_EQ(host_.state().recomputeDesired, 1);
  EXPECT_TRUE(host_.changedTargets);
  EXPECT_EQ(double{host_.state().currentDesired}, 125.0);
}

TEST_F(Click, IsForTheControlInTheEffectWindowOnly) {
  host_.event.effect_win.area = PF_EA_PARAM_TITLE;
  clickAt(177, 165, true);
  EXPECT_EQ(click().continue_refcon[2], 99);
  expectUntouched();
  host_.event.effect_win.area = PF_EA_CONTROL;
  host_.context.w_type = PF_Window_COMP;
  clickAt(177, 165, true);
  expectUntouched();
}

TEST_F(Click, WithoutAnInstanceIsHandled) {
  void** handle = std::exchange(host_.out.sequence_data, nullptr);
  clickAt(177, 165, true);
  dragTo(177);
  EXPECT_EQ(host_.event.evt_out_flags, 9);
  host_.out.sequence_data = handle;
  expectUntouched();
}

TEST_F(Click, OnTheHandleBeginsADrag) {
  clickAt(190, 175);
  EXPECT_EQ(click().continue_refcon[2], 3);
  // (190 - 19) - 337 x 125 / 255 = 171 - 165
  EXPECT_EQ(click().continue_refcon[1], 6);
  EXPECT_EQ(click().send_drag, 1);
  // (184 - 19) / 337 x 255 = 124.85
  EXPECT_EQ(host_.luminance(), 125.0);
  EXPECT_TRUE(host_.changedTargets);
}

TEST_F(Click, OnTheHandleMayLowerTheLevelByOne) {
  // 337 x 3 / 255 = 3.96 is cut to 3, and 3 / 337 x 255 = 2.27.
  host_.state().currentDesired = 3.0;
  host_.state().desiredHandleRect = {14, 171, 31, 180};
  clickAt(22, 175);
  EXPECT_EQ(click().continue_refcon[1], 0);
  EXPECT_EQ(host_.luminance(), 2.0);
}

TEST_F(Click, GrabOffsetOfAnUnanalysedFrameIsTakenTowardZero) {
  host_.state().currentDesired = -1.5;  // rounds to -2: 337 x -2 / 255 = -2.6, cut to -2
  host_.state().desiredHandleRect = {0, 171, 50, 180};
  clickAt(20, 175);
  EXPECT_EQ(click().continue_refcon[1], 3);
}

TEST_F(Click, DragsInWholeLevels) {
  clickAt(184, 175);
  ASSERT_EQ(click().continue_refcon[1], 0);
  dragTo(187);  // 168 / 337 x 255 = 127.12
  EXPECT_EQ(host_.luminance(), 127.0);
  EXPECT_EQ(double{host_.state().currentDesired}, 127.0);
  EXPECT_EQ(host_.event.evt_out_flags, 9);
  EXPECT_EQ(changeFlags(PARAM_LUMINANCE), PF_ChangeFlag_CHANGED_VALUE);
  EXPECT_TRUE(host_.changedTargets);
  dragTo(188);  // 127.88
  EXPECT_EQ(host_.luminance(), 128.0);
}

TEST_F(Click, DragsStayWithinTheLevels) {
  clickAt(184, 175);
  dragTo(18);
  EXPECT_EQ(host_.luminance(), 0.0);
  dragTo(-2'000'000'000);
  EXPECT_EQ(host_.luminance(), 0.0);
  dragTo(356);
  EXPECT_EQ(host_.luminance(), 255.0);
  dragTo(2'000'000'000);
  EXPECT_EQ(host_.luminance(), 255.0);
}

TEST_F(Click, DragsOnlyTheHandle) {
  clickAt(50, 50);
  dragTo(300);
  EXPECT_EQ(host_.event.evt_out_flags, 0);
  clickAt(177, 165);
  host_.setLuminance(128.0);
  dragTo(300);
  EXPECT_EQ(host_.luminance(), 128.0);
  EXPECT_EQ(host_.event.evt_out_flags, 0);
}

TEST_F(Click, DragsInTheControlOnly) {
  clickAt(184, 175);
  host_.setLuminance(128.0);
  host_.event.effect_win.area = PF_EA_NONE;
  dragTo(300);
  host_.event.effect_win.area = PF_EA_CONTROL;
  host_.context.w_type = PF_Window_PREVIEW;
  dragTo(300);
  EXPECT_EQ(host_.luminance(), 128.0);
}

TEST_F(Click, DragsNothingOverAPlotWithoutWidth) {
  clickAt(184, 175);
  host_.setLuminance(128.0);
  host_.state().recomputeDesired = 0;
  for (const std::int32_t right : {19, 18, -2'000'000'000}) {
    host_.state().plotRect.right = right;
    dragTo(300);
    EXPECT_EQ(host_.luminance(), 128.0);
    EXPECT_EQ(host_.state().recomputeDesired, 0);
  }
}

TEST_F(Click, WithoutAValueNothingIsWrittenOrMarked) {
  void** value = std::exchange(host_.param(PARAM_LUMINANCE).u.arb_d.value, nullptr);
  clickAt(184, 175);
  dragTo(300);
  EXPECT_EQ(changeFlags(PARAM_LUMINANCE), 0);
  EXPECT_EQ(host_.state().recomputeDesired, 0);
  EXPECT_EQ(double{host_.state().currentDesired}, 125.0);
  host_.param(PARAM_LUMINANCE).u.arb_d.value = value;
}

TEST_F(Click, AValueThatWillNotLockIsLeftAlone) {
  host_.memory.refuseLock(2);  // the first is the instance
  clickAt(50, 50, true);
  expectUntouched();
}

TEST_F(Click, HitsNothingBeforeTheFirstDraw) {
  RecordingHost* const drawn = &host_;
  drawn->state().panelRect = drawn->state().plotRect = {};
  drawn->state().inputMarkerRect = drawn->state().desiredHandleRect = {};
  clickAt(10, 20);
  EXPECT_EQ(click().continue_refcon[2], 0);
  expectUntouched();
}

}  // namespace
}  // namespace varilum::test
