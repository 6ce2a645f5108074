// tests/ui/events_test.cpp — which events are answered and how.
#include "ui/events.h"

#include <gtest/gtest.h>

#include "tests/ui/recording_host.h"

namespace varilum::test {
namespace {

TEST(Events, LeaveTheCursorToTheHost) {
  RecordingHost host;
  EXPECT_EQ(host.send(PF_Event_ADJUST_CURSOR), 0);
  EXPECT_EQ(host.event.evt_out_flags, PF_EO_HANDLED_EVENT);
  EXPECT_EQ(host.event.u.adjust_cursor.set_cursor, PF_Cursor_NONE);
}

TEST(Events, OtherOnesAreNotThePanels) {
  RecordingHost host;
  for (const std::int32_t type :
       {PF_Event_NONE, PF_Event_NEW_CONTEXT, PF_Event_ACTIVATE, PF_Event_DEACTIVATE, PF_Event_IDLE,
        PF_Event_KEYDOWN_OBSOLETE, PF_Event_KEYDOWN, PF_Event_MOUSE_EXITED, PF_Event_NUM_EVENTS}) {
    EXPECT_EQ(host.send(type), 0) << type;
    EXPECT_EQ(host.event.evt_out_flags, 0) << type;
  }
  EXPECT_TRUE(host.drawn.empty());
}

TEST(Events, WithoutAnInstanceDoNothing) {
  RecordingHost host;
  void** handle = std::exchange(host.out.sequence_data, nullptr);
  for (const std::int32_t type : {PF_Event_ADJUST_CURSOR, PF_Event_CLOSE_CONTEXT}) {
    EXPECT_EQ(host.send(type), 0) << type;
    EXPECT_EQ(host.event.evt_out_flags, 0) << type;
  }
  host.out.sequence_data = handle;
}

TEST(Events, ClosingFollowsTheLayersLength) {
  RecordingHost host;
  host.analyze();
  EXPECT_EQ(host.send(PF_Event_CLOSE_CONTEXT), 0);
  EXPECT_EQ(host.levels().inputLuminance()[0], 100.0) << "the same length keeps everything";
  host.in.total_time = 76;  // 8 frames, rounded
  EXPECT_EQ(host.send(PF_Event_CLOSE_CONTEXT), 0);
  EXPECT_EQ(host.state().frameCount, 8);
  EXPECT_EQ(host.levels().inputLuminance()[0], -1.0);
}

TEST(Events, ClosingTellsThatMemoryIsOut) {
  RecordingHost host;
  host.in.total_time = 80;
  host.memory.refuseNew(1);
  EXPECT_EQ(host.send(PF_Event_CLOSE_CONTEXT), 4);
}

TEST(Events, AnOlderRequestForTargetsStays) {
  RecordingHost host;
  host.state().recomputeDesired = 1;
  host.event.u.do_click.screen_point = {0, 0};
  host.send(PF_Event_DO_CLICK);
  EXPECT_EQ(host.state().recomputeDesired, 1);
  EXPECT_FALSE(host.changedTargets);
}

}  // namespace
}  // namespace varilum::test
