// tests/host/test_effect_fixture.h — a host with the test effect, and its hook in the test's hands.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "host/dynamic_library.h"
#include "host/effect.h"
#include "host/error.h"
#include "host/instance.h"
#include "tests/host/flicker_source.h"
#include "tests/host/recording_listener.h"
#include "tests/host/test_effect.h"

class TestEffect : public testing::Test {
 protected:
  explicit TestEffect(host::HostOptions options = {}, host::Role role = host::Role::afterEffects)
      : module(VARILUM_TEST_EFFECT_PATH), ae(role, {}, std::move(options)), source(10, 40, 20) {
    ae.setListener(&listener);
    library_ = host::openLibrary(VARILUM_TEST_EFFECT_PATH);
    setHook_ = reinterpret_cast<void (*)(void*)>(host::findFunction(library_, "setTestHook"));
    run(nullptr);
  }

  ~TestEffect() override {
    run(nullptr);
    host::closeLibrary(library_);
  }

  // Runs at every command from now on, before the effect's own doing.
  void run(TestHook hook) { setHook_(&hook); }

  // The effect's answer to one command only.
  void on(std::int32_t command, std::function<std::int32_t(const TestCall&)> answer) {
    run([command, answer](const TestCall& call) -> std::optional<std::int32_t> {
      if (call.command != command) return std::nullopt;
      return answer(call);
    });
  }

  // Runs inside a button press, after which the host settles.
  void pressing(host::Instance& instance, std::function<void(const TestCall&)> what) {
    on(PF_Cmd_USER_CHANGED_PARAM, [what](const TestCall& call) {
      what(call);
      return 0;
    });
    instance.press("Go");
    run(nullptr);
  }

  void expectNothingOutstanding() const {
    EXPECT_TRUE(ae.outstanding().nothing()) << ae.outstanding().describe();
  }

  host::EffectModule module;
  RecordingListener listener;
  host::Host ae;
  FlickerSource source;

 private:
  void* library_ = nullptr;
  void (*setHook_)(void*) = nullptr;
};
