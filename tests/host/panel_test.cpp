// tests/host/panel_test.cpp — events in their order, what they carry, and what comes back of them.
#include "host/panel.h"

#include <gmock/gmock.h>

#include <array>

#include "hostapi/events.h"
#include "hostapi/suites/app.h"
#include "hostapi/suites/basic.h"
#include "tests/host/test_effect_fixture.h"

namespace {

using host::Panel;
using testing::ElementsAre;
using testing::HasSubstr;

const PF_EventExtra& eventOf(const TestCall& call) {
  return *static_cast<const PF_EventExtra*>(call.extra);
}

class PanelTest : public TestEffect {
 protected:
  PanelTest() : effect(ae, module), instance(effect, source) {}

  // Keeps each event's kind and record, then lets `answer` act.
  void watch(std::function<std::int32_t(const TestCall&, PF_EventExtra&)> answer = {}) {
    on(PF_Cmd_EVENT, [this, answer](const TestCall& call) -> std::int32_t {
      auto& extra = *static_cast<PF_EventExtra*>(call.extra);
      kinds.push_back(extra.e_type);
      events.push_back(extra);
      times.push_back(call.in->current_time);
      return answer ? answer(call, extra) : 0;
    });
  }

  host::Effect effect;
  host::Instance instance;
  std::vector<std::int32_t> kinds;
  std::vector<PF_EventExtra> events;
  std::vector<std::int32_t> times;
};

TEST_F(PanelTest, EventsComeInTheOrderOfAVisit) {
  watch([](const TestCall&, PF_EventExtra& extra) {
    if (extra.e_type == PF_Event_DO_CLICK) extra.u.do_click.send_drag = 1;
    return 0;
  });
  {
    Panel panel(instance);
    panel.draw();
    panel.adjustCursor({5, 5});
    panel.click({5, 5});
    panel.drag({6, 5});
    panel.release({7, 5});
    panel.idle();
  }
  EXPECT_THAT(kinds,
              ElementsAre(PF_Event_NEW_CONTEXT, PF_Event_ACTIVATE, PF_Event_DRAW,
                          PF_Event_ADJUST_CURSOR, PF_Event_DO_CLICK, PF_Event_DRAG, PF_Event_DRAG,
                          PF_Event_IDLE, PF_Event_DEACTIVATE, PF_Event_CLOSE_CONTEXT));
  EXPECT_EQ(listener.complaints(), "");
}

TEST_F(PanelTest, OneContextFromBeginningToEnd) {
  std::vector<PF_Context**> handles;
  watch([&](const TestCall&, PF_EventExtra& extra) {
    handles.push_back(extra.contextH);
    EXPECT_EQ((*extra.contextH)->magic, 0x05ea771eU);
    EXPECT_EQ((*extra.contextH)->w_type, PF_Window_EFFECT);
    // Four numbers in it belong to the effect.
    if (extra.e_type == PF_Event_NEW_CONTEXT) (*extra.contextH)->plugin_state[2] = 4711;
    EXPECT_EQ((*extra.contextH)->plugin_state[2], 4711);
    return 0;
  });
  {
    Panel panel(instance);
    panel.draw();
  }
  ASSERT_EQ(handles.size(), 5U);
  for (PF_Context** handle : handles) EXPECT_EQ(handle, handles.front());
}

TEST_F(PanelTest, ADamagedContextIsReportedAndMended) {
  watch([](const TestCall&, PF_EventExtra& extra) {
    if (extra.e_type == PF_Event_DRAW) (*extra.contextH)->magic = 1;
    return 0;
  });
  Panel panel(instance);
  panel.draw();
  EXPECT_THAT(listener.complaints(), HasSubstr("context"));
  panel.idle();
  EXPECT_EQ((*events.back().contextH)->magic, 0x05ea771eU);
}

TEST_F(PanelTest, TheControlIsWhereThePanelPutsIt) {
  watch();
  host::PanelOptions options;
  options.left = 30;
  options.top = 70;
  Panel panel(instance, options);
  panel.draw();
  const PF_EffectWindowInfo window = events.back().effect_win;
  EXPECT_EQ(window.index, kCurve);
  EXPECT_EQ(window.area, PF_EA_CONTROL);
  EXPECT_EQ(window.current_frame.left, 30);
  EXPECT_EQ(window.current_frame.top, 70);
  EXPECT_EQ(window.current_frame.right, 150);
  EXPECT_EQ(window.current_frame.bottom, 150);
  panel.moveTo(30, -20);
  panel.draw(host::PanelArea::title);
  EXPECT_EQ(events.back().effect_win.area, PF_EA_PARAM_TITLE);
  EXPECT_EQ(events.back().effect_win.current_frame.top, -20);
  EXPECT_EQ(events.back().effect_win.param_title_frame.bottom, -20);
  EXPECT_EQ(events.front().effect_win.current_frame.right, 0) << "NEW_CONTEXT knows no place";
}

TEST_F(PanelTest, EventsHaveParametersButNoLayer) {
  instance.param("Amount").set(33);
  on(PF_Cmd_EVENT, [](const TestCall& call) {
    if (eventOf(call).e_type == PF_Event_DRAW) {
      EXPECT_EQ(call.params[0]->u.ld.data, nullptr);
      EXPECT_EQ(call.params[kAmount]->u.fd.value, 33 * 65536);
      EXPECT_EQ(call.params[kAmount]->uu.change_flags, 0);
      EXPECT_EQ(call.output, nullptr);
    }
    return 0;
  });
  Panel panel(instance);
  panel.draw();
}

TEST_F(PanelTest, TheTimeIsTheCursors) {
  watch();
  Panel panel(instance);
  instance.goTo(4);
  panel.draw();
  EXPECT_EQ(times.back(), 4 * 128);
  panel.placeCursor(-3);
  panel.draw();
  EXPECT_EQ(times.back(), -3 * 128);
  panel.followInstance();
  panel.draw();
  EXPECT_EQ(times.back(), 4 * 128);
}

TEST_F(PanelTest, RefconsGoFromTheClickToItsDrags) {
  watch([](const TestCall&, PF_EventExtra& extra) {
    if (extra.e_type == PF_Event_DO_CLICK) {
      EXPECT_EQ(extra.u.do_click.continue_refcon[1], 0);
      extra.u.do_click.continue_refcon[1] = 12;
      extra.u.do_click.send_drag = 1;
    } else if (extra.e_type == PF_Event_DRAG) {
      ++extra.u.do_click.continue_refcon[1];
    }
    return 0;
  });
  Panel panel(instance);
  EXPECT_TRUE(panel.click({40, 50, 2, PF_Mod_SHIFT_KEY}).wantsDrags);
  EXPECT_EQ(events.back().u.do_click.screen_point.h, 40);
  EXPECT_EQ(events.back().u.do_click.screen_point.v, 50);
  EXPECT_EQ(events.back().u.do_click.num_clicks, 2);
  EXPECT_EQ(events.back().u.do_click.modifiers, PF_Mod_SHIFT_KEY);
  panel.drag({41, 52});
  EXPECT_EQ(events.back().u.do_click.continue_refcon[1], 12);
  EXPECT_EQ(events.back().u.do_click.screen_point.h, 41);
  EXPECT_EQ(events.back().u.do_click.last_time, 0);
  EXPECT_EQ(events.back().effect_win.area, PF_EA_CONTROL);
  panel.release({43, 52});
  EXPECT_EQ(events.back().u.do_click.continue_refcon[1], 13);
  EXPECT_EQ(events.back().u.do_click.last_time, 1);
  EXPECT_FALSE(panel.dragging());
}

TEST_F(PanelTest, NoDragsUnlessAskedFor) {
  watch();
  Panel panel(instance);
  EXPECT_FALSE(panel.click({1, 1}).wantsDrags);
  EXPECT_THROW(panel.drag({2, 2}), host::Error);
  const auto before = kinds.size();
  EXPECT_FALSE(panel.release({2, 2}).handled);
  EXPECT_EQ(kinds.size(), before);
}

TEST_F(PanelTest, AClickMayFindTheButtonUpAlready) {
  watch([](const TestCall&, PF_EventExtra& extra) {
    extra.u.do_click.send_drag = 1;
    return 0;
  });
  Panel panel(instance);
  EXPECT_FALSE(panel.click({1, 1}, true).wantsDrags);
  EXPECT_EQ(events.back().u.do_click.last_time, 1);
  EXPECT_FALSE(panel.dragging());
}

// Sets "Amount" in events of this kind.
std::function<std::int32_t(const TestCall&, PF_EventExtra&)> setting(std::int32_t kind,
                                                                     bool handled) {
  return [kind, handled](const TestCall& call, PF_EventExtra& extra) {
    if (extra.e_type != kind) return 0;
    call.params[kAmount]->u.fd.value = 77 * 65536;
    call.params[kAmount]->uu.change_flags = PF_ChangeFlag_CHANGED_VALUE;
    if (handled) extra.evt_out_flags = PF_EO_HANDLED_EVENT;
    return 0;
  };
}

TEST_F(PanelTest, ValuesOfHandledClicksAreTakenOver) {
  watch(setting(PF_Event_DO_CLICK, true));
  Panel panel(instance);
  const host::EventOutcome outcome = panel.click({1, 1});
  EXPECT_TRUE(outcome.handled);
  EXPECT_THAT(outcome.changed, ElementsAre(kAmount));
  EXPECT_EQ(instance.param("Amount").value(), 77.0);
  EXPECT_EQ(kinds.back(), PF_Event_DRAW) << "the panel is drawn anew";
  EXPECT_EQ(listener.complaints(), "");
}

TEST_F(PanelTest, ValuesOfHandledKeysAreTakenOver) {
  watch(setting(PF_Event_KEYDOWN, true));
  Panel panel(instance);
  EXPECT_THAT(panel.key('a').changed, ElementsAre(kAmount));
  EXPECT_EQ(instance.param("Amount").value(), 77.0);
}

TEST_F(PanelTest, ValuesOfUnhandledClicksAreDroppedAndReported) {
  watch(setting(PF_Event_DO_CLICK, false));
  Panel panel(instance);
  EXPECT_TRUE(panel.click({1, 1}).changed.empty());
  EXPECT_EQ(instance.param("Amount").value(), 10.0);
  EXPECT_NE(kinds.back(), PF_Event_DRAW);
  EXPECT_THAT(listener.complaints(), HasSubstr("not marked as handled"));
}

TEST_F(PanelTest, DrawsMayNotChangeValues) {
  watch(setting(PF_Event_DRAW, true));
  Panel panel(instance);
  panel.draw();
  EXPECT_EQ(instance.param("Amount").value(), 10.0);
  EXPECT_THAT(listener.complaints(), HasSubstr("DRAW may not change values"));
}

TEST_F(PanelTest, AClickOnAKeyframedParameterSetsAKeyAtTheCursor) {
  instance.param("Amount").setAt(0, 10);
  watch(setting(PF_Event_DO_CLICK, true));
  Panel panel(instance);
  instance.goTo(6);
  panel.click({1, 1});
  EXPECT_EQ(instance.param("Amount").keyframeCount(), 2U);
  EXPECT_EQ(instance.param("Amount").value(6), 77.0);
  EXPECT_EQ(instance.param("Amount").value(0), 10.0);
}

TEST_F(PanelTest, AcceptedChangesUpdateTheControls) {
  int updates = 0;
  run([&](const TestCall& call) -> std::optional<std::int32_t> {
    if (call.command == PF_Cmd_UPDATE_PARAMS_UI) ++updates;
    if (call.command != PF_Cmd_EVENT) return std::nullopt;
    return setting(PF_Event_DO_CLICK, true)(call, *static_cast<PF_EventExtra*>(call.extra));
  });
  Panel panel(instance);
  const int before = updates;
  panel.click({1, 1});
  EXPECT_EQ(updates, before + 1);
}

TEST_F(PanelTest, RenderCopiesFollowHandledClicks) {
  host::Image out;
  instance.render(0, host::Depth::bits8, out);
  watch([](const TestCall&, PF_EventExtra& extra) {
    extra.evt_out_flags = PF_EO_HANDLED_EVENT;
    return 0;
  });
  Panel panel(instance);
  panel.click({1, 1});
  int resetups = 0;
  run([&](const TestCall& call) -> std::optional<std::int32_t> {
    if (call.command == PF_Cmd_SEQUENCE_RESETUP) ++resetups;
    return std::nullopt;
  });
  instance.render(0, host::Depth::bits8, out);
  EXPECT_EQ(resetups, 1);
}

TEST_F(PanelTest, AnErrorOfADrawIsThrownAndTheLastPictureStays) {
  bool fails = false;
  watch([&](const TestCall& call, PF_EventExtra&) {
    if (!fails) return 0;
    std::strcpy(call.out->return_msg, "Out of paint.");
    return 516;
  });
  Panel panel(instance);
  panel.draw();
  fails = true;
  try {
    panel.draw();
    FAIL() << "no exception";
  } catch (const host::CommandError& error) {
    EXPECT_EQ(error.result(), 516);
    EXPECT_THAT(error.what(), HasSubstr("Out of paint."));
  }
  fails = false;
  panel.draw();
}

TEST_F(PanelTest, ClosingThrowsWhatTheEffectAnswersAndClosesAllTheSame) {
  watch([](const TestCall&, PF_EventExtra& extra) {
    return extra.e_type == PF_Event_DEACTIVATE ? 512 : 0;
  });
  Panel panel(instance);
  EXPECT_THROW(panel.close(), host::CommandError);
  EXPECT_EQ(kinds.back(), PF_Event_CLOSE_CONTEXT);
  EXPECT_THROW(panel.draw(), host::Error);
  const auto count = kinds.size();
  panel.close();
  EXPECT_EQ(kinds.size(), count);
}

TEST_F(PanelTest, DontDrawIsPassedOn) {
  watch();
  Panel panel(instance);
  panel.draw(host::PanelArea::control, true);
  EXPECT_EQ(events.back().evt_in_flags, PF_EI_DONT_DRAW);
  panel.draw();
  EXPECT_EQ(events.back().evt_in_flags, 0);
}

TEST_F(PanelTest, TheBackgroundColourIsThePanels) {
  PF_App_Color seen{};
  watch([&](const TestCall& call, PF_EventExtra& extra) {
    if (extra.e_type != PF_Event_DRAW) return 0;
    const void* table = nullptr;
    EXPECT_EQ(call.in->pica_basicP->AcquireSuite(kPFAppSuite, kPFAppSuiteVersion4, &table), 0);
    static_cast<const PFAppSuite4*>(table)->PF_AppGetBgColor(&seen);
    return call.in->pica_basicP->ReleaseSuite(kPFAppSuite, kPFAppSuiteVersion4);
  });
  host::PanelOptions options;
  options.background[0] = 1;
  options.background[1] = 20000;
  options.background[2] = 65535;
  Panel panel(instance, options);
  panel.draw();
  EXPECT_EQ(seen.red, 1);
  EXPECT_EQ(seen.green, 20000);
  EXPECT_EQ(seen.blue, 65535);
}

}  // namespace
