// tests/effect/refusals_test.cpp — every call that a host may refuse, refused one after the other.
#include <gtest/gtest.h>

#include <iostream>

#include "host/error.h"
#include "tests/effect/test_footage.h"

namespace effect_test {
namespace {

using host::CallKind;
using host::Depth;
using host::Image;
using host::Instance;

// A whole visit: apply, edit, analyse, render both ways at all depths, save, open, clear.
void visitAll(host::Effect& effect, TestFootage& footage) {
  Image out;
  Instance fx{effect, footage};
  fx.param("Number of smoothing frames").set(2);
  fx.press("Analyze");
  fx.render(1, Depth::bits8, out);
  fx.render(1, Depth::bits16, out);
  fx.render(2, Depth::float32, out);
  fx.render(0, Depth::bits8, out, host::RenderPath::classic);
  fx.render(0, Depth::bits16, out, host::RenderPath::classic);
  const auto saved = fx.save();
  Instance again = Instance::open(effect, footage, saved);
  again.param("Deflicker method").set(1);
  again.render(2, Depth::bits8, out);
  again.press("Clear");
}

// One thread, so that calls come in the same order every time.
host::HostOptions steadyHost() {
  host::HostOptions options;
  options.threads = 1;
  return options;
}

struct Refusal {
  CallKind kind;
  const char* name;
  std::int32_t error;
};

class EveryRefusal : public ::testing::TestWithParam<Refusal> {};

TEST_P(EveryRefusal, EndsInAnErrorOrGoesOnAndLeavesNothingBehind) {
  const Refusal refusal = GetParam();
  TestFootage footage = flickeringFootage(24, 20, 3, Depth::bits8);
  std::uint64_t calls = 0;
  {
    Visit visit{host::Role::afterEffects, {13, 14}, steadyHost()};
    // Calls are counted under a plan only; this one is never reached.
    visit.host().faults().arm(refusal.kind, std::uint64_t{1} << 60, refusal.error);
    visit.host().faults().resetCounts();
    visitAll(visit.effect(), footage);
    calls = visit.host().faults().calls(refusal.kind);
  }
  ASSERT_GT(calls, 0u) << refusal.name;
  int failed = 0;
  for (std::uint64_t n = 1; n <= calls; ++n) {
    SCOPED_TRACE(std::string(refusal.name) + " " + std::to_string(n) + " of " +
                 std::to_string(calls));
    Visit visit{host::Role::afterEffects, {13, 14}, steadyHost()};
    host::Faults& faults = visit.host().faults();
    faults.resetCounts();
    faults.arm(refusal.kind, n, refusal.error);
    try {
      visitAll(visit.effect(), footage);
    } catch (const host::Error&) {
      ++failed;
    }
    faults.disarm();
    EXPECT_EQ(faults.injected(), 1u);
    // The host is still good for another visit.
    visitAll(visit.effect(), footage);
  }
  std::cout << refusal.name << ": " << calls << " refused, " << failed << " reported\n";
}

INSTANTIATE_TEST_SUITE_P(All, EveryRefusal,
                         ::testing::Values(Refusal{CallKind::newHandle, "newHandle", 4},
                                           Refusal{CallKind::lockHandle, "lockHandle", 4},
                                           Refusal{CallKind::checkoutParam, "checkoutParam", 513},
                                           Refusal{CallKind::checkoutLayer, "checkoutLayer", 4},
                                           Refusal{CallKind::checkinParam, "checkinParam", 512},
                                           Refusal{CallKind::acquireSuite, "acquireSuite",
                                                   0x53214664},
                                           Refusal{CallKind::iterate, "iterate", 517},
                                           Refusal{CallKind::progress, "progress", 512},
                                           Refusal{CallKind::infoText, "infoText", 512},
                                           Refusal{CallKind::guidMixIn, "guidMixIn", 516},
                                           Refusal{CallKind::checkoutPixels, "checkoutPixels", 4},
                                           Refusal{CallKind::checkoutOutput, "checkoutOutput", 4},
                                           Refusal{CallKind::getPixelFormat, "getPixelFormat", 516},
                                           Refusal{CallKind::script, "script", 1}),
                         [](const auto& param) { return std::string(param.param.name); });

TEST(SetUpRefusals, LeaveNothingBehind) {
  for (const CallKind kind :
       {CallKind::newHandle, CallKind::lockHandle, CallKind::acquireSuite, CallKind::addParam,
        CallKind::registerUi, CallKind::registerAegp, CallKind::isRenderEngine}) {
    for (std::uint64_t n = 1; n < 60; ++n) {
      host::Host app{host::Role::afterEffects, {13, 14}};
      app.faults().arm(kind, n, 4);
      try {
        const host::Effect effect{app, effectModule()};
      } catch (const host::Error&) {
        // Most refusals end the set-up; what counts here is what is left of it.
      }
      const bool reached = app.faults().injected() > 0;
      app.faults().disarm();
      EXPECT_EQ(app.outstanding().describe(), "nothing") << static_cast<int>(kind) << " " << n;
      if (!reached) break;
    }
  }
}

}  // namespace
}  // namespace effect_test
