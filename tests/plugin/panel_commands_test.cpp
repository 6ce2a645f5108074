// tests/plugin/panel_commands_test.cpp — events of the panel as the host sends them.
#include "plugin/panel_commands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "plugin/dispatch.h"
#include "tests/ui/recording_host.h"

namespace varilum::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A panel over a layer in Keyframes with every frame desired at 125.
class PanelCommands : public ::testing::Test {
 protected:
  PanelCommands() {
    host_.analyze();
    host_.param(PARAM_DEFLICKER_METHOD).u.pd.value = 1;
    host_.send(PF_Event_DRAW);
    host_.state().recomputeDesired = 0;
    host_.out.global_data = host_.memory.create(sizeof(GlobalState));
  }
  ~PanelCommands() override { host_.memory.dispose(host_.out.global_data); }

  std::int32_t send(std::int32_t type, void* extra) {
    std::memcpy(*host_.out.global_data, &host_.global, sizeof(GlobalState));
    host_.event.e_type = type;
    return dispatch(PF_Cmd_EVENT, {host_.in, host_.out, host_.params(), nullptr, extra});
  }
  std::int32_t send(std::int32_t type) { return send(type, &host_.event); }
  void clickHandle() {
    host_.event.u.do_click = {};
    host_.event.u.do_click.screen_point = {184, 175};
    EXPECT_EQ(send(PF_Event_DO_CLICK), 0);
  }
  void drag(bool last) {
    host_.event.u.do_click.screen_point.h = 187;  // level 127
    host_.event.u.do_click.last_time = last ? 1 : 0;
    EXPECT_EQ(send(PF_Event_DRAG), 0);
  }
  double counter() { return host_.param(PARAM_COUNTER).u.fs_d.value; }

  RecordingHost host_;
};

TEST_F(PanelCommands, ADragIsOneChangeWhenItEnds) {
  clickHandle();
  drag(false);
  EXPECT_EQ(host_.state().changeCounter, 0U);
  EXPECT_EQ(counter(), 0.0);
  drag(true);
  EXPECT_EQ(host_.state().changeCounter, 1U);
  EXPECT_EQ(counter(), 1.0);
  EXPECT_EQ(host_.param(PARAM_COUNTER).uu.change_flags, PF_ChangeFlag_CHANGED_VALUE);
  EXPECT_EQ(host_.luminance(), 127.0);
}

TEST_F(PanelCommands, AClickIsNoChangeOfItsOwn) {
  host_.event.u.do_click.last_time = 1;
  EXPECT_EQ(send(PF_Event_DO_CLICK), 0);
  EXPECT_EQ(host_.state().changeCounter, 0U);
  EXPECT_EQ(counter(), 0.0);
}

TEST_F(PanelCommands, TheMouseRecomputesTargetsAndOwesThemAgain) {
  host_.levels().desiredLuminance()[0] = 3.0;
  clickHandle();
  EXPECT_NE(host_.levels().desiredLuminance()[0], 3.0);
  EXPECT_EQ(host_.state().recomputeDesired, 1);
}

TEST_F(PanelCommands, AClickThatWritesNothingOwesNoTargets) {
  host_.state().recomputeDesired = 1;
  host_.levels().desiredLuminance()[0] = 3.0;
  host_.event.u.do_click = {};
  EXPECT_EQ(send(PF_Event_DO_CLICK), 0);
  EXPECT_EQ(host_.levels().desiredLuminance()[0], 128.0);
  EXPECT_EQ(host_.state().recomputeDesired, 0);
  EXPECT_EQ(host_.param(PARAM_LUMINANCE).uu.change_flags, PF_ChangeFlag_CHANGED_VALUE);
}

TEST_F(PanelCommands, ErrorsInTheTargetsAreNotTheEvents) {
  host_.refuse("checkout_param", 1, 99);
  host_.event.u.do_click = {};
  EXPECT_EQ(send(PF_Event_DO_CLICK), 0);
  EXPECT_TRUE(host_.refused);
}

TEST_F(PanelCommands, TheMouseRefreshesTheControlsInAfterEffects) {
  clickHandle();
  EXPECT_EQ(host_.out.out_flags, PF_OutFlag_REFRESH_UI);
  drag(true);
  EXPECT_EQ(host_.out.out_flags, PF_OutFlag_REFRESH_UI);
  host_.global.isAfterEffects = 0;
  clickHandle();
  EXPECT_EQ(host_.out.out_flags, 0);
}

TEST_F(PanelCommands, ADrawRelabelsClearInAfterEffects) {
  std::strcpy(host_.state().statusText, "1 of 5 frames analyzed");
  EXPECT_EQ(send(PF_Event_DRAW), 0);
  EXPECT_FALSE(host_.drawn.empty());
  EXPECT_THAT(host_.labels,
              ElementsAre(std::pair<std::int32_t, std::string>{8, "1 of 5 frames analyzed"}));
  EXPECT_EQ(host_.out.out_flags, 0);
  EXPECT_EQ(host_.param(PARAM_LUMINANCE).uu.change_flags, 0);
  host_.labels.clear();
  host_.global.isAfterEffects = 0;
  EXPECT_EQ(send(PF_Event_DRAW), 0);
  EXPECT_THAT(host_.labels, IsEmpty());
}

TEST_F(PanelCommands, TheLabelsResultIsTheDraws) {
  host_.refuse("PF_UpdateParamUI", 1, 55);
  EXPECT_EQ(send(PF_Event_DRAW), 55);
  host_.global.isAfterEffects = 0;
  host_.refuse("PaintRect", 1, 66);
  EXPECT_EQ(send(PF_Event_DRAW), 66);
}

TEST_F(PanelCommands, EventsWithoutARecordAreNone) {
  host_.drawn.clear();
  EXPECT_EQ(send(PF_Event_DRAW, nullptr), 0);
  EXPECT_THAT(host_.drawn, IsEmpty());
}

TEST_F(PanelCommands, AnEventWithoutAnInstanceOrParametersIsHandled) {
  void** handle = std::exchange(host_.out.sequence_data, nullptr);
  host_.event.u.do_click.last_time = 1;
  host_.event.e_type = PF_Event_DRAG;
  EXPECT_EQ(dispatch(PF_Cmd_EVENT, {host_.in, host_.out, nullptr, nullptr, &host_.event}), 0);
  EXPECT_EQ(host_.event.evt_out_flags, 9);
  host_.out.sequence_data = handle;
}

}  // namespace
}  // namespace varilum::test
