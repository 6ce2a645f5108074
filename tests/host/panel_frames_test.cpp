// tests/host/panel_frames_test.cpp — frames that a panel has rendered in the background.
#include <gmock/gmock.h>

#include <optional>

#include "host/panel.h"
#include "hostapi/events.h"
#include "hostapi/suites/aegp_effect.h"
#include "hostapi/suites/aegp_interface.h"
#include "hostapi/suites/aegp_layer_render_options.h"
#include "hostapi/suites/aegp_render.h"
#include "hostapi/suites/aegp_utility.h"
#include "hostapi/suites/aegp_world.h"
#include "hostapi/suites/basic.h"
#include "hostapi/suites/custom_ui.h"
#include "hostapi/suites/world.h"
#include "tests/host/test_effect_fixture.h"

namespace {

using host::CallKind;
using testing::HasSubstr;

template <class Suite>
const Suite* suite(const TestCall& call, const char* name, std::int32_t version) {
  const void* table = nullptr;
  EXPECT_EQ(call.in->pica_basicP->AcquireSuite(name, version, &table), 0) << name;
  EXPECT_EQ(call.in->pica_basicP->ReleaseSuite(name, version), 0);
  return static_cast<const Suite*>(table);
}

// One pass through all seven suites, as panels do it. Leaves nothing behind.
struct Pass {
  bool receipt = false;
  bool pixels = false;
  std::int32_t error = 0;
  std::int32_t format = 0;
  std::int32_t width = 0;
  std::uint8_t red = 0;
};

Pass askForFrame(const TestCall& call, std::int32_t plugin) {
  Pass pass;
  const auto* ui = suite<PF_EffectCustomUISuite2>(call, kPFEffectCustomUISuite, 2);
  const auto* interfaces = suite<AEGP_PFInterfaceSuite1>(call, kAEGPPFInterfaceSuite, 1);
  const auto* effects = suite<AEGP_EffectSuite4>(call, kAEGPEffectSuite, 4);
  const auto* optionsSuite =
      suite<AEGP_LayerRenderOptionsSuite2>(call, kAEGPLayerRenderOptionsSuite, 2);
  const auto* managers =
      suite<AEGP_RenderAsyncManagerSuite1>(call, kAEGPRenderAsyncManagerSuite, 1);
  const auto* renders = suite<AEGP_RenderSuite5>(call, kAEGPRenderSuite, 8);
  const auto* worlds = suite<AEGP_WorldSuite3>(call, kAEGPWorldSuite, 3);
  const auto* formats = suite<PF_WorldSuite2>(call, kPFWorldSuite, 2);

  PF_AsyncManagerP manager = nullptr;
  AEGP_EffectRefH effect = nullptr;
  AEGP_LayerRenderOptionsH options = nullptr;
  AEGP_FrameReceiptH receipt = nullptr;
  AEGP_WorldH world = nullptr;
  auto* extra = static_cast<PF_EventExtra*>(call.extra);
  const auto steps = [&] {
    if (const auto e = ui->PF_GetContextAsyncManager(call.in, extra, &manager)) return e;
    if (const auto e = interfaces->AEGP_GetNewEffectForEffect(plugin, call.in->effect_ref, &effect))
      return e;
    if (const auto e = optionsSuite->AEGP_NewFromUpstreamOfEffect(plugin, effect, &options))
      return e;
    if (const auto e =
            managers->AEGP_CheckoutOrRender_LayerFrame_AsyncManager(manager, 1, options, &receipt))
      return e;
    pass.receipt = receipt != nullptr;
    if (!pass.receipt) return 0;
    if (const auto e = renders->AEGP_GetReceiptWorld(receipt, &world)) return e;
    pass.pixels = world != nullptr;
    if (!pass.pixels) return 0;
    PF_EffectWorld record{};
    if (const auto e = worlds->AEGP_FillOutPFEffectWorld(world, &record)) return e;
    const PF_EffectWorld copy = record;
    pass.width = copy.width;
    pass.red = copy.data->red;
    return formats->PF_GetPixelFormat(&copy, &pass.format);
  };
  pass.error = steps();
  if (receipt != nullptr) {
    EXPECT_EQ(renders->AEGP_CheckinFrame(receipt), 0);
  }
  if (options != nullptr) {
    EXPECT_EQ(optionsSuite->AEGP_Dispose(options), 0);
  }
  if (effect != nullptr) {
    EXPECT_EQ(effects->AEGP_DisposeEffect(effect), 0);
  }
  return pass;
}

class PanelFrames : public TestEffect {
 protected:
  PanelFrames() : source8(10, 40, 20) {
    // Registers with the application, as an effect that has frames rendered must.
    on(PF_Cmd_GLOBAL_SETUP, [this](const TestCall& call) {
      const auto* utility = suite<AEGP_UtilitySuite5>(call, kAEGPUtilitySuite, 11);
      EXPECT_EQ(utility->AEGP_RegisterWithAEGP(nullptr, "Test", &plugin), 0);
      return -1;
    });
    EXPECT_THROW(host::Effect(ae, module), host::CommandError);
    run(nullptr);
    effect.emplace(ae, module);
    instance.emplace(*effect, source8);
  }

  // Draws asking for the frame in each of them.
  std::vector<Pass> draws(host::AsyncDelay delay, int count) {
    std::vector<Pass> passes;
    asking(passes);
    host::PanelOptions options;
    options.async = delay;
    host::Panel panel(*instance, options);
    for (int i = 0; i < count; ++i) panel.draw();
    return passes;
  }
  void asking(std::vector<Pass>& passes) {
    on(PF_Cmd_EVENT, [&](const TestCall& call) {
      if (static_cast<PF_EventExtra*>(call.extra)->e_type == PF_Event_DRAW) {
        passes.push_back(askForFrame(call, plugin));
      }
      return 0;
    });
  }

  std::int32_t plugin = 0;
  FlickerSource source8;
  std::optional<host::Effect> effect;
  std::optional<host::Instance> instance;
};

TEST_F(PanelFrames, ReadyAtOnce) {
  const auto passes = draws({0, false}, 1);
  EXPECT_TRUE(passes[0].pixels);
  EXPECT_EQ(passes[0].error, 0);
  EXPECT_EQ(passes[0].width, 40);
  EXPECT_EQ(passes[0].format, PF_PixelFormat_ARGB32) << "the format is known of copies";
  EXPECT_EQ(passes[0].red, std::lround(FlickerSource::level(0, 0, 40) * 255));
  EXPECT_EQ(ae.outstanding().renderReferences, 0);
  EXPECT_EQ(listener.complaints(), "");
}

TEST_F(PanelFrames, ReadyAfterSomeDraws) {
  const auto passes = draws({2, false}, 4);
  EXPECT_FALSE(passes[0].receipt);
  EXPECT_FALSE(passes[1].receipt);
  EXPECT_TRUE(passes[2].pixels);
  EXPECT_TRUE(passes[3].pixels);
}

TEST_F(PanelFrames, UntilThenTheReceiptMayBeEmpty) {
  const auto passes = draws({1, true}, 2);
  EXPECT_TRUE(passes[0].receipt);
  EXPECT_FALSE(passes[0].pixels);
  EXPECT_EQ(passes[0].error, 0);
  EXPECT_TRUE(passes[1].pixels);
}

TEST_F(PanelFrames, NeverReady) {
  const auto passes = draws({host::AsyncDelay::kNever, false}, 5);
  for (const Pass& pass : passes) EXPECT_FALSE(pass.receipt);
}

TEST_F(PanelFrames, DrawUntilReadyDrawsAsOftenAsItTakes) {
  std::vector<Pass> passes;
  asking(passes);
  host::PanelOptions options;
  options.async.draws = 3;
  host::Panel panel(*instance, options);
  panel.drawUntilReady();
  EXPECT_EQ(passes.size(), 4U);
  EXPECT_TRUE(passes.back().pixels);
  EXPECT_FALSE(panel.waiting());
}

TEST_F(PanelFrames, WhatNeverComesIsNotWaitedFor) {
  std::vector<Pass> passes;
  asking(passes);
  host::PanelOptions options;
  options.async.draws = host::AsyncDelay::kNever;
  host::Panel panel(*instance, options);
  panel.drawUntilReady();
  EXPECT_EQ(passes.size(), 1U);
  EXPECT_TRUE(panel.waiting());
}

TEST_F(PanelFrames, AnotherFrameTakesThePlaceOfTheOneAskedFor) {
  std::vector<Pass> passes;
  asking(passes);
  host::Panel panel(*instance);  // ready one draw later
  panel.draw();
  instance->goTo(7);
  panel.draw();
  EXPECT_FALSE(passes[1].receipt);
  panel.draw();
  ASSERT_TRUE(passes[2].pixels);
  EXPECT_EQ(passes[2].red, std::lround(FlickerSource::level(7, 0, 40) * 255));
}

TEST_F(PanelFrames, AFailingSourceComesOutOfTheDraw) {
  source8.beforeRead = [](std::int32_t) { throw std::runtime_error("no such frame"); };
  std::vector<Pass> passes;
  asking(passes);
  host::PanelOptions options;
  options.async.draws = 0;
  host::Panel panel(*instance, options);
  EXPECT_THROW(panel.draw(), std::runtime_error);
  EXPECT_EQ(ae.outstanding().renderReferences, 0);
}

TEST_F(PanelFrames, EachCallCanBeRefused) {
  for (const CallKind kind : {CallKind::asyncManager, CallKind::newEffectRef,
                              CallKind::renderOptions, CallKind::asyncFrame, CallKind::receiptWorld,
                              CallKind::fillWorld, CallKind::getPixelFormat}) {
    SCOPED_TRACE(static_cast<int>(kind));
    ae.faults().arm(kind, 1, 4711);
    const auto passes = draws({0, false}, 2);
    ae.faults().disarm();
    EXPECT_EQ(passes[0].error, 4711);
    EXPECT_EQ(passes[1].error, 0);
    EXPECT_TRUE(passes[1].pixels);
    EXPECT_EQ(ae.outstanding().renderReferences, 0);
  }
}

TEST_F(PanelFrames, OnlyInDraws) {
  std::vector<Pass> passes;
  on(PF_Cmd_EVENT, [&](const TestCall& call) {
    if (static_cast<PF_EventExtra*>(call.extra)->e_type == PF_Event_IDLE) {
      passes.push_back(askForFrame(call, plugin));
    }
    return 0;
  });
  host::Panel panel(*instance);
  panel.idle();
  EXPECT_NE(passes.at(0).error, 0);
  EXPECT_THAT(listener.complaints(), HasSubstr("AEGP_GetNewEffectForEffect"));
}

TEST_F(PanelFrames, WhatIsNotGivenBackIsReportedAndCounted) {
  on(PF_Cmd_EVENT, [&](const TestCall& call) {
    if (static_cast<PF_EventExtra*>(call.extra)->e_type != PF_Event_DRAW) return 0;
    AEGP_EffectRefH kept = nullptr;
    return suite<AEGP_PFInterfaceSuite1>(call, kAEGPPFInterfaceSuite, 1)
        ->AEGP_GetNewEffectForEffect(plugin, call.in->effect_ref, &kept);
  });
  host::Panel panel(*instance);
  panel.draw();
  EXPECT_THAT(listener.complaints(), HasSubstr("DRAW did not give back 1 render references"));
  EXPECT_EQ(ae.outstanding().renderReferences, 1);
}

}  // namespace
