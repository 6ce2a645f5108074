// tests/host/refusals_test.cpp — the real effect in a host that refuses one call after another.
#include <gtest/gtest.h>

#include "host/effect.h"
#include "host/error.h"
#include "host/instance.h"
#include "tests/host/flicker_source.h"
#include "tests/host/recording_listener.h"

namespace {

using Kind = host::CallKind;

struct Refusal {
  const char* name;
  Kind kind;
  std::int32_t error;
};

class Refusals : public testing::TestWithParam<Refusal> {};

// A whole life: apply, edit, analyse, render both ways, save, open.
void live(host::Host& ae, const host::EffectModule& module, FlickerSource& source) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  instance.param("Number of smoothing frames").setAt(1, 9.0);
  instance.param("Luminance").setTextAt(2, "90");
  instance.press("Analyze");
  host::Image out;
  instance.render(1, host::Depth::bits8, out);
  instance.render(1, host::Depth::float32, out);
  instance.render(1, host::Depth::bits8, out, host::RenderPath::classic);
  host::Instance::open(effect, source, instance.save());
}

// The n-th call is refused, for every n until the life goes by without a refusal. Each time nothing
// may crash, nothing but the host's own exceptions may come out, and nothing may be left behind.
TEST_P(Refusals, everyCallMayBeRefused) {
  const host::EffectModule module(VARILUM_EFFECT_PATH);
  FlickerSource source(4, 16, 12);
  constexpr std::uint64_t kMost = 3000;
  std::uint64_t n = 1;
  for (; n < kMost; ++n) {
    SCOPED_TRACE(n);
    host::HostOptions options;
    options.threads = 1;
    host::Host ae(host::Role::afterEffects, {}, options);
    RecordingListener listener;
    ae.setListener(&listener);
    ae.faults().arm(GetParam().kind, n, GetParam().error);
    try {
      live(ae, module, source);
    } catch (const host::Error&) {
      EXPECT_GT(ae.faults().injected(), 0u);
    }
    const bool refused = ae.faults().injected() > 0;
    ae.faults().disarm();
    ASSERT_TRUE(ae.outstanding().nothing()) << ae.outstanding().describe() << "\n"
                                            << listener.complaints();
    if (!refused) break;
  }
  EXPECT_GT(n, 1u) << "no such call was made";
  EXPECT_LT(n, kMost);
}

INSTANTIATE_TEST_SUITE_P(Calls, Refusals,
                         testing::Values(Refusal{"newHandle", Kind::newHandle, 4},
                                         Refusal{"lockHandle", Kind::lockHandle, 4},
                                         Refusal{"checkoutParam", Kind::checkoutParam, 513},
                                         Refusal{"checkoutLayer", Kind::checkoutLayer, 4},
                                         Refusal{"checkinParam", Kind::checkinParam, 512},
                                         Refusal{"acquireSuite", Kind::acquireSuite, 0x53214664},
                                         Refusal{"addParam", Kind::addParam, 514},
                                         Refusal{"registerUi", Kind::registerUi, 516},
                                         Refusal{"iterate", Kind::iterate, 517},
                                         Refusal{"progress", Kind::progress, 4},
                                         Refusal{"infoText", Kind::infoText, 512},
                                         Refusal{"guidMixIn", Kind::guidMixIn, 516},
                                         Refusal{"checkoutPixels", Kind::checkoutPixels, 4},
                                         Refusal{"checkoutOutput", Kind::checkoutOutput, 4},
                                         Refusal{"getPixelFormat", Kind::getPixelFormat, 516},
                                         Refusal{"updateParamUi", Kind::updateParamUi, 512},
                                         Refusal{"script", Kind::script, 1},
                                         Refusal{"registerAegp", Kind::registerAegp, 1},
                                         Refusal{"isRenderEngine", Kind::isRenderEngine, 512}),
                         [](const auto& refusal) { return refusal.param.name; });

}  // namespace
