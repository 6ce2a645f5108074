// tests/effect/command_order_test.cpp — commands in orders that no host should send.
#include <gtest/gtest.h>

#include <cstring>

#include "host/error.h"
#include "host/handles.h"
#include "host/instance_state.h"
#include "host/panel.h"
#include "host/render.h"
#include "hostapi/events.h"
#include "tests/effect/test_footage.h"
#include "tests/host/recording_listener.h"

namespace effect_test {
namespace {

using host::Command;
using host::Depth;
using host::Image;
using host::Instance;

class Order : public ::testing::Test {
 protected:
  Order() : footage_(flickeringFootage(60, 44, 5, Depth::bits8)) {
    visit_.host().setListener(&listener_);
  }
  ~Order() override { EXPECT_EQ(listener_.complaints(), ""); }

  static host::SequenceCopy& dataOf(Instance& fx) { return fx.state().ui; }

  std::int32_t send(host::SequenceCopy& copy, std::int32_t command) {
    Command sent(visit_.effect().state(), &copy, command);
    sent.giveParams();
    const std::int32_t result = sent.send();
    out_ = sent.out;
    return result;
  }

  // Analysed, and the frame it then shows.
  Instance analyzed(Image& picture) {
    Instance fx{visit_.effect(), footage_};
    fx.press("Analyze");
    fx.render(1, Depth::bits8, picture);
    return fx;
  }

  static bool same(const Image& a, const Image& b) {
    for (std::int32_t y = 0; y < a.height(); ++y) {
      if (std::memcmp(a.row(y), b.row(y), static_cast<std::size_t>(a.width()) * 4) != 0) {
        return false;
      }
    }
    return true;
  }

  RecordingListener listener_;
  TestFootage footage_;
  Visit visit_;
  PF_OutData out_{};
};

TEST_F(Order, AboutBeforeSetUpAndAfterSetDown) {
  host::Host app{host::Role::afterEffects};
  host::EffectState early(app, effectModule());
  for (int round = 0; round < 2; ++round) {
    Command about(early, nullptr, PF_Cmd_ABOUT);
    about.quiet = true;
    EXPECT_EQ(about.send(), 0);
    EXPECT_TRUE(std::string(about.out.return_msg).starts_with("Varilum4 v4.2.0"));
    if (round == 0) const host::Effect life{app, effectModule()};
  }
  EXPECT_EQ(app.outstanding().describe(), "nothing");
}

// Data that is flat is data: it is handed out as it is, and taken up again.
TEST_F(Order, FlattenTwiceAndResetupTwice) {
  Image before;
  Instance fx = analyzed(before);
  host::SequenceCopy& copy = dataOf(fx);
  void** const live = copy.sequenceData;
  ASSERT_EQ(send(copy, PF_Cmd_SEQUENCE_FLATTEN), 0);
  void** const flat = copy.sequenceData;
  EXPECT_NE(flat, live);
  EXPECT_EQ(send(copy, PF_Cmd_SEQUENCE_FLATTEN), 0);
  EXPECT_EQ(copy.sequenceData, flat);
  EXPECT_EQ(send(copy, PF_Cmd_GET_FLATTENED_SEQUENCE_DATA), 0);
  EXPECT_EQ(out_.sequence_data, flat);
  ASSERT_EQ(send(copy, PF_Cmd_SEQUENCE_RESETUP), 0);
  void** const again = copy.sequenceData;
  // Live data at RESETUP stays what it is.
  ASSERT_EQ(send(copy, PF_Cmd_SEQUENCE_RESETUP), 0);
  EXPECT_EQ(copy.sequenceData, again);
  Image after;
  fx.render(1, Depth::bits8, after);
  EXPECT_TRUE(same(before, after));
}

TEST_F(Order, FlatDataIsSetDownAsItIs) {
  Image before;
  Instance fx = analyzed(before);
  ASSERT_EQ(send(dataOf(fx), PF_Cmd_SEQUENCE_FLATTEN), 0);
  // The visit's end finds nothing left, the arrays of the image included.
}

TEST_F(Order, SetDownTwiceAndSetUpTwice) {
  Image before;
  Instance fx = analyzed(before);
  host::SequenceCopy& copy = dataOf(fx);
  EXPECT_EQ(send(copy, PF_Cmd_SEQUENCE_SETDOWN), 0);
  EXPECT_EQ(send(copy, PF_Cmd_SEQUENCE_SETDOWN), 0);
  EXPECT_EQ(send(copy, PF_Cmd_SEQUENCE_SETUP), 0);
  EXPECT_EQ(send(copy, PF_Cmd_SEQUENCE_SETUP), 0);
  fx.press("Analyze");
  Image after;
  fx.render(1, Depth::bits8, after);
  EXPECT_TRUE(same(before, after));
}

// Flat data is no analysis: what would read it finds none, and nothing is followed in it.
TEST_F(Order, FlatDataInEveryCommand) {
  Image before;
  Instance fx = analyzed(before);
  host::SequenceCopy& copy = dataOf(fx);
  ASSERT_EQ(send(copy, PF_Cmd_SEQUENCE_FLATTEN), 0);
  for (const std::int32_t command :
       {PF_Cmd_QUERY_DYNAMIC_FLAGS, PF_Cmd_UPDATE_PARAMS_UI, PF_Cmd_FRAME_SETUP,
        PF_Cmd_FRAME_SETDOWN, PF_Cmd_USER_CHANGED_PARAM, PF_Cmd_EVENT}) {
    EXPECT_EQ(send(copy, command), 0) << command;
  }
  ASSERT_EQ(send(copy, PF_Cmd_SEQUENCE_RESETUP), 0);
  Image after;
  fx.render(1, Depth::bits8, after);
  EXPECT_TRUE(same(before, after));
}

TEST_F(Order, EveryCommandWithoutData) {
  host::EffectState& effect = visit_.effect().state();
  host::SequenceCopy copy(effect, footage_, host::ParameterStore(effect, footage_.info()), false);
  for (const std::int32_t command :
       {PF_Cmd_SEQUENCE_RESETUP, PF_Cmd_SEQUENCE_FLATTEN, PF_Cmd_GET_FLATTENED_SEQUENCE_DATA,
        PF_Cmd_SEQUENCE_SETDOWN, PF_Cmd_QUERY_DYNAMIC_FLAGS, PF_Cmd_UPDATE_PARAMS_UI,
        PF_Cmd_FRAME_SETUP, PF_Cmd_FRAME_SETDOWN, PF_Cmd_USER_CHANGED_PARAM, PF_Cmd_EVENT,
        PF_Cmd_SMART_PRE_RENDER, PF_Cmd_SMART_RENDER, PF_Cmd_ABOUT}) {
    EXPECT_EQ(send(copy, command), 0) << command;
    EXPECT_EQ(copy.sequenceData, nullptr) << command;
  }
  for (std::int32_t index = 0; index < 40; ++index) {
    Command change(effect, &copy, PF_Cmd_USER_CHANGED_PARAM);
    change.giveParams();
    PF_UserChangedParamExtra extra{index};
    EXPECT_EQ(change.send(&extra), 0) << index;
  }
  Image output(60, 44, Depth::bits8);
  EXPECT_THROW(host::renderFrame(copy, 1, Depth::bits8, output, host::RenderPath::classic),
               host::CommandError);
  EXPECT_EQ(listener_.shown().back().text, "Varilum effect invoked without sequence data");
  EXPECT_THROW(host::renderFrame(copy, 1, Depth::bits8, output, host::RenderPath::smart),
               host::CommandError);
}

TEST_F(Order, EventsBeforeAnyDraw) {
  for (const bool isAnalyzed : {false, true}) {
    Instance fx{visit_.effect(), footage_};
    if (isAnalyzed) fx.press("Analyze");
    host::Panel panel{fx};
    for (const std::int32_t x : {-5, 0, 9, 170, 345, 100000}) {
      EXPECT_FALSE(panel.click({x, 300}).wantsDrags);
      panel.adjustCursor({x, 300});
    }
    panel.idle();
    panel.key(0x1B);
    EXPECT_EQ(fx.param("Luminance").text(), "128.00");
    panel.drawUntilReady();
  }
}

TEST_F(Order, ThePanelClosesDuringADrag) {
  Image before;
  Instance fx = analyzed(before);
  host::Panel panel{fx};
  panel.drawUntilReady();
  bool dragging = false;
  for (std::int32_t x = 0; x < 400 && !dragging; ++x) dragging = panel.click({x, 310}).wantsDrags;
  panel.close();
  EXPECT_THROW(panel.drag({50, 310}), host::Error);
  host::Panel other{fx};
  other.drawUntilReady();
  EXPECT_FALSE(other.dragging());
}

// Suites are not to be had at all.
TEST_F(Order, WithoutAWayToSuites) {
  Image before;
  Instance fx = analyzed(before);
  for (const std::int32_t command : {PF_Cmd_SEQUENCE_RESETUP, PF_Cmd_UPDATE_PARAMS_UI}) {
    Command sent(visit_.effect().state(), &dataOf(fx), command);
    sent.in.pica_basicP = nullptr;
    sent.giveParams();
    const std::int32_t result = sent.send();
    EXPECT_TRUE(result == 0 || result == PF_Err_BAD_CALLBACK_PARAM) << command << " " << result;
  }
  Image after;
  fx.render(1, Depth::bits8, after);
  EXPECT_TRUE(same(before, after));
}

}  // namespace
}  // namespace effect_test
