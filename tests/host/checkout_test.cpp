// tests/host/checkout_test.cpp — values and frames that an effect checks out.
#include <thread>

#include "tests/host/test_effect_fixture.h"

namespace {

PF_ParamDef checkedOut(const TestCall& call, std::int32_t index, std::int32_t time,
                       std::uint32_t scale) {
  PF_ParamDef record{};
  EXPECT_EQ(call.in->inter.checkout_param(call.in->effect_ref, index, time, 0, scale, &record), 0);
  return record;
}

void checkIn(const TestCall& call, PF_ParamDef& record) {
  EXPECT_EQ(call.in->inter.checkin_param(call.in->effect_ref, &record), 0);
}

double curveAt(const TestCall& call, std::int32_t time, std::uint32_t scale) {
  PF_ParamDef record = checkedOut(call, kCurve, time, scale);
  double value = 0.0;
  std::memcpy(&value, call.in->utils->host_lock_handle(record.u.arb_d.value), sizeof value);
  call.in->utils->host_unlock_handle(record.u.arb_d.value);
  checkIn(call, record);
  return value;
}

TEST_F(TestEffect, defaultsArriveInTheUnitsOfTheRecord) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  pressing(instance, [](const TestCall& call) {
    EXPECT_EQ(call.params[kAmount]->u.fd.value, 10 * 65536);
    EXPECT_EQ(call.params[kSwitch]->u.bd.value, 0);
    EXPECT_EQ(call.params[kSpot]->u.td.x_value, 10 * 65536);  // 25 % of 40
    EXPECT_EQ(call.params[kSpot]->u.td.y_value, 15 * 65536);  // 75 % of 20
    EXPECT_EQ(call.params[kMode]->u.pd.value, 2);
    EXPECT_EQ(call.params[kTestParams], nullptr);
    EXPECT_EQ(call.params[0]->u.ld.data, nullptr);
    EXPECT_EQ(call.in->num_params, kTestParams);
    EXPECT_EQ(call.output, nullptr);
    for (int i = 0; i < kTestParams; ++i) EXPECT_EQ(call.params[i]->uu.change_flags, 0);
  });
}

TEST_F(TestEffect, valuesAreInterpolatedAtTheExactTimeInAnyScale) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  instance.param("Amount").setAt(2, 20.0);  // 256 of 3200
  instance.param("Amount").setAt(6, 60.0);  // 768 of 3200
  instance.param("Switch").setAt(2, 0.0);
  instance.param("Switch").setAt(6, 1.0);
  instance.param("Curve").setTextAt(2, "100");
  instance.param("Curve").setTextAt(6, "140");
  pressing(instance, [](const TestCall& call) {
    const auto amount = [&](std::int32_t time, std::uint32_t scale) {
      PF_ParamDef record = checkedOut(call, kAmount, time, scale);
      checkIn(call, record);
      return record.u.fd.value / 65536.0;
    };
    const auto on = [&](std::int32_t time) {
      PF_ParamDef record = checkedOut(call, kSwitch, time, 3200);
      checkIn(call, record);
      return record.u.bd.value;
    };
    EXPECT_EQ(amount(0, 3200), 20.0);
    EXPECT_EQ(amount(-500, 3200), 20.0);
    EXPECT_EQ(amount(256, 3200), 20.0);
    EXPECT_EQ(amount(512, 3200), 40.0);
    EXPECT_EQ(amount(384, 3200), 30.0);
    EXPECT_EQ(amount(16, 100), 40.0);          // the same instant as 512 of 3200
    EXPECT_EQ(amount(640000, 4000000), 40.0);  // and again
    EXPECT_EQ(amount(2147483647, 1), 60.0);
    EXPECT_EQ(on(767), 0);
    EXPECT_EQ(on(768), 1);
    EXPECT_EQ(curveAt(call, 0, 3200), 100.0);
    EXPECT_EQ(curveAt(call, 384, 3200), 110.0);
    EXPECT_EQ(curveAt(call, 768, 3200), 140.0);
  });
  EXPECT_EQ(listener.complaints(), "");
}

TEST_F(TestEffect, layerFramesAreThoseAtOrBeforeTheTime) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  pressing(instance, [](const TestCall& call) {
    const auto leftEdge = [&](std::int32_t time) {
      PF_ParamDef record = checkedOut(call, 0, time, 3200);
      EXPECT_EQ(record.u.ld.width, 40);
      EXPECT_EQ(record.u.ld.height, 20);
      const int red = record.u.ld.data[0].alpha == 0 ? -1 : record.u.ld.data[0].red;
      checkIn(call, record);
      return red;
    };
    const auto expected = [](std::int32_t frame) {
      return static_cast<int>(std::lround(FlickerSource::level(frame, 0, 40) * 255.0));
    };
    EXPECT_EQ(leftEdge(0), expected(0));
    EXPECT_EQ(leftEdge(127), expected(0));
    EXPECT_EQ(leftEdge(128), expected(1));
    EXPECT_EQ(leftEdge(9 * 128 + 127), expected(9));
    EXPECT_EQ(leftEdge(-1), -1);
    EXPECT_EQ(leftEdge(10 * 128), -1);
  });
  EXPECT_EQ(listener.complaints(), "");
}

TEST_F(TestEffect, whatIsNotCheckedInIsReportedAndTakenBack) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  pressing(instance, [](const TestCall& call) {
    static PF_ParamDef kept[3];
    kept[0] = checkedOut(call, kAmount, 0, 3200);
    kept[1] = checkedOut(call, kCurve, 0, 3200);
    kept[2] = checkedOut(call, 0, 0, 3200);
  });
  EXPECT_EQ(listener.texts(host::MessageKind::protocol).size(), 3u);
  EXPECT_EQ(ae.outstanding().paramCheckouts, 0);
  EXPECT_EQ(ae.outstanding().layerCheckouts, 0);
}

TEST_F(TestEffect, checkingInTwiceOrNothingIsRefused) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  pressing(instance, [](const TestCall& call) {
    PF_ParamDef record = checkedOut(call, kAmount, 0, 3200);
    PF_ParamDef moved = record;
    checkIn(call, moved);
    EXPECT_EQ(call.in->inter.checkin_param(call.in->effect_ref, &record), 516);
    PF_ParamDef never{};
    EXPECT_EQ(call.in->inter.checkin_param(call.in->effect_ref, &never), 516);
  });
  EXPECT_EQ(listener.texts(host::MessageKind::protocol).size(), 2u);
}

TEST_F(TestEffect, wrongIndexAndWrongReferenceAreRefused) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  pressing(instance, [](const TestCall& call) {
    PF_ParamDef record{};
    const auto& inter = call.in->inter;
    EXPECT_EQ(inter.checkout_param(call.in->effect_ref, kTestParams, 0, 0, 1, &record), 513);
    EXPECT_EQ(inter.checkout_param(call.in->effect_ref, -1, 0, 0, 1, &record), 513);
    EXPECT_EQ(inter.checkout_param(nullptr, kAmount, 0, 0, 1, &record), 516);
    std::thread([&] {
      EXPECT_EQ(inter.checkout_param(call.in->effect_ref, kAmount, 0, 0, 1, &record), 516);
    }).join();
  });
  EXPECT_EQ(listener.texts(host::MessageKind::protocol).size(), 4u);
}

TEST_F(TestEffect, refusalsComeAtTheChosenCall) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  ae.faults().arm(host::CallKind::checkoutParam, 2, 513);
  pressing(instance, [](const TestCall& call) {
    PF_ParamDef record{};
    const auto checkout = [&] {
      return call.in->inter.checkout_param(call.in->effect_ref, kAmount, 0, 0, 1, &record);
    };
    EXPECT_EQ(checkout(), 0);
    checkIn(call, record);
    EXPECT_EQ(checkout(), 513);
    EXPECT_EQ(checkout(), 0);
    checkIn(call, record);
  });
  EXPECT_EQ(ae.faults().injected(), 1u);
  EXPECT_EQ(ae.faults().calls(host::CallKind::checkoutParam), 3u);
  ae.faults().disarm();
  EXPECT_EQ(listener.complaints(), "");
}

TEST_F(TestEffect, aFailedReadIsRefusedToTheEffectAndRethrown) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  std::int32_t seen = 0;
  const auto checkout = [&](const TestCall& call) {
    PF_ParamDef record{};
    seen = call.in->inter.checkout_param(call.in->effect_ref, 0, 0, 0, 3200, &record);
  };
  source.beforeRead = [](std::int32_t) { throw host::Error("unreadable"); };
  EXPECT_THROW(pressing(instance, checkout), host::Error);
  EXPECT_EQ(seen, 512);
  source.beforeRead = [](std::int32_t) { throw host::Cancelled(); };
  EXPECT_THROW(pressing(instance, checkout), host::Cancelled);
  EXPECT_EQ(seen, 517);
  source.beforeRead = [](std::int32_t) { throw std::bad_alloc(); };
  EXPECT_THROW(pressing(instance, checkout), std::bad_alloc);
  EXPECT_EQ(seen, 4);
}

}  // namespace
