// tests/host/commands_test.cpp — the order and fields of commands, and what is taken from them.
#include "hostapi/suites/basic.h"
#include "hostapi/suites/handle.h"
#include "hostapi/suites/param_utils.h"
#include "tests/host/test_effect_fixture.h"

namespace {

const PF_ParamUtilsSuite3* paramUtils(const TestCall& call) {
  const void* table = nullptr;
  EXPECT_EQ(call.in->pica_basicP->AcquireSuite(kPFParamUtilsSuite, 3, &table), 0);
  return static_cast<const PF_ParamUtilsSuite3*>(table);
}

TEST_F(TestEffect, commandsOfALifeComeInOrder) {
  std::vector<std::int32_t> order;
  run([&](const TestCall& call) -> std::optional<std::int32_t> {
    if (call.command != PF_Cmd_ARBITRARY_CALLBACK) order.push_back(call.command);
    return std::nullopt;
  });
  {
    host::Effect effect(ae, module);
    host::Instance instance(effect, source);
    host::Image out;
    instance.render(0, host::Depth::bits8, out);
    instance.render(1, host::Depth::bits8, out);
    instance.press("Go");
    instance.render(2, host::Depth::bits8, out);
  }
  run(nullptr);
  const std::vector<std::int32_t> expected{1,  4,                       // the effect
                                           5,  18, 14,                  // the instance
                                           28, 6,  23, 24, 23, 24,      // a copy renders
                                           13, 8,  14,                  // it is stale: the button
                                           28, 6,  23, 24, 8,  8,  3};  // both copies end
  EXPECT_EQ(order, expected);
  expectNothingOutstanding();
  EXPECT_EQ(listener.complaints(), "");
}

TEST_F(TestEffect, onlyRenderCopiesAreSetUpAgainAsSuch) {
  std::vector<std::int32_t> flags;
  run([&](const TestCall& call) -> std::optional<std::int32_t> {
    if (call.command == PF_Cmd_SEQUENCE_RESETUP) {
      flags.push_back(call.in->in_flags);
    } else {
      EXPECT_EQ(call.in->in_flags, 0);
    }
    return std::nullopt;
  });
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  host::Image out;
  instance.render(0, host::Depth::bits8, out);
  const host::Instance opened = host::Instance::open(effect, source, instance.save());
  run(nullptr);
  EXPECT_EQ(flags, (std::vector<std::int32_t>{1, 0}));
}

TEST_F(TestEffect, handlesAreInPlaceOnEveryCommandAndFlagsAreRubbish) {
  host::Effect effect(ae, module);
  run([&](const TestCall& call) -> std::optional<std::int32_t> {
    EXPECT_EQ(call.in->global_data, call.out->global_data);
    EXPECT_NE(call.in->global_data, nullptr);
    EXPECT_EQ(call.in->sequence_data, call.out->sequence_data);
    EXPECT_EQ(call.out->return_msg[0], '\0');
    EXPECT_NE(call.in->effect_ref, nullptr);
    EXPECT_EQ(call.in->downsample_x.num, 1);
    EXPECT_EQ(call.in->downsample_x.den, 1u);
    if (call.command == PF_Cmd_SEQUENCE_SETUP) {
      EXPECT_EQ(call.in->sequence_data, nullptr);
      EXPECT_EQ(call.in->width, 40);
      EXPECT_EQ(call.in->total_time, 10 * 128);
    }
    return std::nullopt;
  });
  host::Instance instance(effect, source);
}

TEST_F(TestEffect, markedValuesAreTakenAndOthersAreNot) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  instance.param("Spot").setAt(0, host::Point{1.0, 1.0});
  instance.goTo(4);
  pressing(instance, [](const TestCall& call) {
    EXPECT_EQ(call.in->current_time, 4 * 128);
    call.params[kAmount]->u.fd.value = 33 * 65536;
    call.params[kAmount]->uu.change_flags = PF_ChangeFlag_CHANGED_VALUE;
    call.params[kHidden]->u.fs_d.value = 1e9;  // above the range
    call.params[kHidden]->uu.change_flags = PF_ChangeFlag_CHANGED_VALUE;
    call.params[kSpot]->u.td.x_value = -32768;  // half a pixel left of the layer
    call.params[kSpot]->uu.change_flags = PF_ChangeFlag_CHANGED_VALUE;
    call.params[kMode]->u.pd.value = 3;  // not marked
    const double value = 7.5;
    std::memcpy(call.in->utils->host_lock_handle(call.params[kCurve]->u.arb_d.value), &value,
                sizeof value);
    call.in->utils->host_unlock_handle(call.params[kCurve]->u.arb_d.value);
    call.params[kCurve]->uu.change_flags = PF_ChangeFlag_CHANGED_VALUE;
  });
  EXPECT_EQ(instance.param("Amount").value(), 33.0);
  EXPECT_EQ(instance.param("Amount").keyframeCount(), 0u);
  EXPECT_EQ(instance.param("Hidden").value(), 64000.0);
  EXPECT_EQ(instance.param("Mode").value(), 2.0);
  EXPECT_EQ(instance.param("Curve").text(), "7.50");
  // It had keyframes: it gets one at the cursor.
  EXPECT_EQ(instance.param("Spot").keyframeCount(), 2u);
  EXPECT_EQ(instance.param("Spot").point(4).x, -0.5);
  EXPECT_EQ(instance.param("Spot").point(0).x, 1.0);
}

TEST_F(TestEffect, changesInUpdateParamsUiAreDropped) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  on(PF_Cmd_UPDATE_PARAMS_UI, [](const TestCall& call) {
    call.params[kAmount]->u.fd.value = 77 * 65536;
    call.params[kAmount]->uu.change_flags = PF_ChangeFlag_CHANGED_VALUE;
    return 0;
  });
  instance.goTo(1);
  EXPECT_EQ(instance.param("Amount").value(), 10.0);
}

TEST_F(TestEffect, redefinitionsReachOnlyTheAppearance) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  pressing(instance, [](const TestCall& call) {
    const auto* suite = paramUtils(call);
    PF_ParamDef wanted = *call.params[kAmount];
    std::memset(wanted.name, 'x', sizeof wanted.name);  // no end: to be cut
    wanted.ui_flags = PF_PUI_DISABLED | PF_PUI_TOPIC;
    wanted.param_type = PF_Param_CHECKBOX;
    wanted.u.fd.valid_max = 1;
    wanted.u.fd.slider_max = 50 * 65536;
    EXPECT_EQ(suite->PF_UpdateParamUI(call.in->effect_ref, kAmount, &wanted), 0);
    EXPECT_EQ(suite->PF_UpdateParamUI(call.in->effect_ref, 0, &wanted), 513);
    EXPECT_EQ(suite->PF_UpdateParamUI(call.in->effect_ref, kAmount, call.params[kAmount]), 516);
    call.in->pica_basicP->ReleaseSuite(kPFParamUtilsSuite, 3);
  });
  pressing(instance, [](const TestCall& call) {
    const PF_ParamDef& amount = *call.params[kAmount];
    EXPECT_EQ(std::string(amount.name), std::string(31, 'x'));
    EXPECT_EQ(amount.ui_flags, PF_PUI_DISABLED);
    EXPECT_EQ(amount.param_type, PF_Param_FIX_SLIDER);
    EXPECT_EQ(amount.u.fd.valid_max, 100 * 65536);
    EXPECT_EQ(amount.u.fd.slider_max, 50 * 65536);
  });
}

TEST_F(TestEffect, aReplacedHandleIsIgnoredWhereItMayNotBe) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  void** foreign = nullptr;
  pressing(instance, [&](const TestCall& call) {
    foreign = call.in->utils->host_new_handle(8);
    call.out->sequence_data = foreign;
  });
  EXPECT_EQ(listener.texts(host::MessageKind::protocol).size(), 1u);
  pressing(instance, [&](const TestCall& call) {
    EXPECT_NE(call.in->sequence_data, foreign);
    call.in->utils->host_dispose_handle(foreign);
  });
}

TEST_F(TestEffect, exceptionsStopAtTheBorder) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  on(PF_Cmd_USER_CHANGED_PARAM, [](const TestCall&) -> std::int32_t { throw 42; });
  try {
    instance.press("Go");
    FAIL();
  } catch (const host::CommandError& error) {
    EXPECT_EQ(error.result(), 512);
    EXPECT_EQ(error.command(), PF_Cmd_USER_CHANGED_PARAM);
  }
  EXPECT_EQ(listener.texts(host::MessageKind::protocol).size(), 1u);
}

TEST_F(TestEffect, unbalancedLocksAndSuitesAreReportedAndUndone) {
  host::Effect effect(ae, module);
  {
    host::Instance instance(effect, source);
    pressing(instance, [](const TestCall& call) {
      call.in->utils->host_lock_handle(call.in->sequence_data);
      call.in->utils->host_lock_handle(call.in->global_data);
    });
    EXPECT_EQ(listener.texts(host::MessageKind::protocol).size(), 2u);
    EXPECT_EQ(ae.outstanding().locks, 0);
    pressing(instance, [](const TestCall& call) {
      const void* table = nullptr;
      call.in->pica_basicP->AcquireSuite(kPFHandleSuite, 2, &table);
    });
    EXPECT_EQ(ae.outstanding().suites, 1);
    pressing(instance, [](const TestCall& call) {
      call.in->pica_basicP->ReleaseSuite(kPFHandleSuite, 2);
      EXPECT_NE(call.in->pica_basicP->ReleaseSuite(kPFHandleSuite, 2), 0);
      const void* table = &table;
      EXPECT_EQ(call.in->pica_basicP->AcquireSuite("PF handle suite", 2, &table), 0x53214664);
      EXPECT_EQ(table, nullptr);
    });
    EXPECT_EQ(ae.outstanding().suites, 0);
  }
  expectNothingOutstanding();
}

TEST_F(TestEffect, returnMessagesReachTheUser) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  pressing(instance, [](const TestCall& call) { std::strcpy(call.out->return_msg, "By the way"); });
  pressing(instance, [](const TestCall& call) {
    std::strcpy(call.out->return_msg, "Bad news");
    call.out->out_flags = PF_OutFlag_DISPLAY_ERROR_MESSAGE;
  });
  EXPECT_EQ(listener.texts(host::MessageKind::info), std::vector<std::string>{"By the way"});
  EXPECT_EQ(listener.texts(host::MessageKind::error), std::vector<std::string>{"Bad news"});
  EXPECT_EQ(effect.about(), "A test effect.");
}

TEST_F(TestEffect, refusedSetUpsLeaveNothingBehind) {
  on(PF_Cmd_GLOBAL_SETUP, [](const TestCall& call) {
    call.out->global_data = call.in->utils->host_new_handle(16);
    std::strcpy(call.out->return_msg, "Too old");
    return -1;
  });
  EXPECT_THROW(host::Effect(ae, module), host::CommandError);
  expectNothingOutstanding();
  run(nullptr);
  {
    host::Effect effect(ae, module);
    on(PF_Cmd_SEQUENCE_SETUP, [](const TestCall& call) {
      call.out->sequence_data = call.in->utils->host_new_handle(8);
      return 4;
    });
    EXPECT_THROW(host::Instance(effect, source), host::CommandError);
    run(nullptr);
  }
  expectNothingOutstanding();
}

TEST_F(TestEffect, parametersSurviveTheirInstanceMoving) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  host::Parameter amount = instance.param("Amount");
  host::Instance moved(std::move(instance));
  amount.set(5.0);
  EXPECT_EQ(moved.param(kAmount).value(), 5.0);
  EXPECT_THROW(moved.param("Mode").setAt(1, 1.0), host::Error);
  EXPECT_THROW(moved.param("Amount").setAt(10, 1.0), host::Error);
  EXPECT_THROW(moved.param("Curve").setText("abc"), host::Error);
  EXPECT_THROW(moved.press("Nowhere"), host::Error);
  EXPECT_THROW(moved.param("Nowhere"), host::Error);
}

}  // namespace
