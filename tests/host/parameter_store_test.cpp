// tests/host/parameter_store_test.cpp — constants, keyframes, ranges, and copies that stay apart.
#include "host/parameter_store.h"

#include "host/effect_state.h"
#include "tests/host/test_effect_fixture.h"

namespace {

using host::Value;

class ParameterStoreTest : public TestEffect {
 protected:
  ParameterStoreTest() : effect(ae, module), store(effect.state(), source.info()) {}

  double at(const host::ParameterStore& from, std::int32_t index, std::int32_t time) const {
    return from.at(index, {time, source.info().timeScale}).x;
  }

  host::Effect effect;
  host::ParameterStore store;
};

TEST_F(ParameterStoreTest, keyframesMaySetInAnyOrderAndTwice) {
  store.setKeyframe(kAmount, 512, {50.0, 0.0, {}});
  store.setKeyframe(kAmount, 0, {10.0, 0.0, {}});
  store.setKeyframe(kAmount, 256, {90.0, 0.0, {}});
  store.setKeyframe(kAmount, 256, {30.0, 0.0, {}});
  EXPECT_EQ(store.track(kAmount).keys.size(), 3u);
  EXPECT_EQ(at(store, kAmount, 128), 20.0);
  EXPECT_EQ(at(store, kAmount, 384), 40.0);
  store.removeKeyframes(kAmount, 384);
  EXPECT_TRUE(store.track(kAmount).constant);
  EXPECT_EQ(at(store, kAmount, 0), 40.0);
}

TEST_F(ParameterStoreTest, valuesAreKeptWithinTheirRange) {
  store.set(kAmount, 0, {1000.0, 0.0, {}});
  EXPECT_EQ(at(store, kAmount, 0), 100.0);
  store.set(kAmount, 0, {-1.0, 0.0, {}});
  EXPECT_EQ(at(store, kAmount, 0), 0.0);
  store.set(kAmount, 0, {std::nan(""), 0.0, {}});
  EXPECT_EQ(at(store, kAmount, 0), 0.0);
  store.set(kMode, 0, {7.0, 0.0, {}});
  EXPECT_EQ(at(store, kMode, 0), 3.0);
  store.set(kSwitch, 0, {-0.5, 0.0, {}});
  EXPECT_EQ(at(store, kSwitch, 0), 1.0);
}

TEST_F(ParameterStoreTest, fixedValuesAreRoundedAndNegativePointsGoDown) {
  PF_ParamDef record = store.declaration(kSpot).definition;
  host::ParameterStore::write(record, {-0.5, 1.0 / 65536.0 * 1.5, {}});
  EXPECT_EQ(record.u.td.x_value, -32768);
  EXPECT_EQ(record.u.td.x_value >> 16, -1);
  EXPECT_EQ(record.u.td.y_value, 2);
  host::ParameterStore::write(record, {1e9, -1e9, {}});
  EXPECT_EQ(record.u.td.x_value, 2147483647);
  EXPECT_EQ(record.u.td.y_value, -2147483647 - 1);
}

TEST_F(ParameterStoreTest, aCopyDoesNotFollowTheOriginal) {
  store.set(kAmount, 0, {1.0, 0.0, {}});
  const host::ParameterStore copy(store);
  store.set(kAmount, 0, {2.0, 0.0, {}});
  store.setKeyframe(kSpot, 128, {3.0, 4.0, {}});
  EXPECT_EQ(at(copy, kAmount, 0), 1.0);
  EXPECT_TRUE(copy.track(kSpot).constant);
  EXPECT_EQ(at(store, kAmount, 0), 2.0);
}

TEST_F(ParameterStoreTest, arbitraryValuesAreFreshEachTimeAndDisposedOf) {
  const auto before = ae.outstanding().handles;
  {
    const Value first = store.at(kCurve, {0, 1});
    const Value second = store.at(kCurve, {0, 1});
    EXPECT_NE(first.opaque->handle(), second.opaque->handle());
    EXPECT_EQ(ae.outstanding().handles, before + 2);
  }
  EXPECT_EQ(ae.outstanding().handles, before);
}

TEST_F(ParameterStoreTest, anEffectWithoutMemoryGivesNoValueAndNoCrash) {
  ae.faults().arm(host::CallKind::newHandle, 1, 0, true);
  // The test effect writes through the handle it got; keep it from that.
  on(PF_Cmd_ARBITRARY_CALLBACK, [](const TestCall&) { return 0; });
  const Value value = store.at(kCurve, {0, 1});
  EXPECT_EQ(value.opaque->handle(), nullptr);
  run(nullptr);
  ae.faults().disarm();
}

}  // namespace
