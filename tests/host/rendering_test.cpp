// tests/host/rendering_test.cpp — frames on their way through an effect, and around its mistakes.
#include <algorithm>
#include <limits>

#include "hostapi/smart_render.h"
#include "tests/host/test_effect_fixture.h"

namespace {

using host::Depth;

class StressedTestEffect : public TestEffect {
 protected:
  static host::HostOptions stressed() {
    host::HostOptions options;
    options.stress = {.moveHandles = true,
                      .poisonMemory = true,
                      .rowPadding = 12,
                      .originX = 3,
                      .originY = 2,
                      .shuffleRows = true,
                      .withoutParams = true};
    options.threads = 3;
    return options;
  }
  StressedTestEffect() : TestEffect(stressed()) {}
};

// The test effect inverts: the result is worked out from the source's formula alone.
void expectInverted(const host::Image& out, std::int32_t frame, double tolerance) {
  for (std::int32_t y = 0; y < out.height(); ++y) {
    for (std::int32_t x = 0; x < out.width(); ++x) {
      ASSERT_NEAR(FlickerSource::red(out, x, y), 1.0 - FlickerSource::level(frame, x, out.width()),
                  tolerance)
          << x << ", " << y;
    }
  }
}

TEST_F(TestEffect, everyDepthGoesThroughTheSmartPair) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  host::Image out;
  instance.render(3, Depth::bits8, out);
  expectInverted(out, 3, 0.5 / 255);
  instance.render(4, Depth::bits16, out);
  expectInverted(out, 4, 0.5 / 32768);
  instance.render(5, Depth::float32, out);
  expectInverted(out, 5, 1e-6);
  EXPECT_EQ(listener.complaints(), "");
}

TEST_F(StressedTestEffect, paddingAndOriginsChangeNothing) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  host::Image out;
  for (std::int32_t frame = 0; frame < 10; ++frame) {
    instance.render(frame, Depth::bits8, out);
    expectInverted(out, frame, 0.5 / 255);
    instance.render(frame, Depth::float32, out);
    expectInverted(out, frame, 1e-6);
  }
  EXPECT_EQ(listener.complaints(), "");
}

TEST_F(StressedTestEffect, writingBesideThePictureIsFound) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  host::Image out;
  on(PF_Cmd_SMART_RENDER, [](const TestCall& call) {
    const auto* extra = static_cast<PF_SmartRenderExtra*>(call.extra);
    PF_EffectWorld* in = nullptr;
    PF_EffectWorld* target = nullptr;
    extra->cb->checkout_layer_pixels(call.in->effect_ref, 7, &in);
    extra->cb->checkout_output(call.in->effect_ref, &target);
    target->data[-1].red ^= 1;
    return 0;
  });
  instance.render(0, Depth::bits8, out);
  EXPECT_EQ(listener.texts(host::MessageKind::protocol).size(), 1u);
  listener.forget();
  on(PF_Cmd_SMART_RENDER, [](const TestCall& call) {
    const auto* extra = static_cast<PF_SmartRenderExtra*>(call.extra);
    PF_EffectWorld* in = nullptr;
    extra->cb->checkout_layer_pixels(call.in->effect_ref, 7, &in);
    in->data[0].red ^= 1;
    return 0;
  });
  instance.render(0, Depth::bits8, out);
  EXPECT_EQ(listener.texts(host::MessageKind::protocol).size(), 1u);
}

TEST_F(TestEffect, partialResultsAreTransparentAround) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  host::Image out;
  run([](const TestCall& call) -> std::optional<std::int32_t> {
    if (call.command == PF_Cmd_SMART_PRE_RENDER) {
      const auto* extra = static_cast<PF_PreRenderExtra*>(call.extra);
      extra->output->result_rect = {10, 5, 12, 6};
      PF_CheckoutResult layer{};
      return extra->cb->checkout_layer(call.in->effect_ref, 0, 7, &extra->input->output_request, 0,
                                       0, 1, &layer);
    }
    if (call.command != PF_Cmd_SMART_RENDER) return std::nullopt;
    const auto* extra = static_cast<PF_SmartRenderExtra*>(call.extra);
    PF_EffectWorld* in = nullptr;
    PF_EffectWorld* target = nullptr;
    extra->cb->checkout_layer_pixels(call.in->effect_ref, 7, &in);
    extra->cb->checkout_output(call.in->effect_ref, &target);
    EXPECT_EQ(target->width, 2);
    EXPECT_EQ(target->height, 1);
    EXPECT_EQ(target->origin_x, 10);
    EXPECT_EQ(target->origin_y, 5);
    const PF_Pixel white{255, 255, 255, 255};
    return call.in->utils->fill(call.in->effect_ref, &white, nullptr, target);
  });
  instance.render(0, Depth::bits8, out);
  for (std::int32_t y = 0; y < out.height(); ++y) {
    for (std::int32_t x = 0; x < out.width(); ++x) {
      const bool inside = y == 5 && (x == 10 || x == 11);
      ASSERT_EQ(FlickerSource::red(out, x, y), inside ? 1.0 : 0.0) << x << ", " << y;
    }
  }
}

TEST_F(TestEffect, anEmptyResultIsNotRendered) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  host::Image out;
  run([](const TestCall& call) -> std::optional<std::int32_t> {
    EXPECT_NE(call.command, PF_Cmd_SMART_RENDER);
    if (call.command == PF_Cmd_SMART_PRE_RENDER) return 0;
    return std::nullopt;
  });
  instance.render(0, Depth::bits8, out);
  EXPECT_EQ(FlickerSource::mean(out), 0.0);
}

TEST_F(TestEffect, idsOrderAndRepetitionAreChecked) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  host::Image out;
  on(PF_Cmd_SMART_RENDER, [](const TestCall& call) {
    const auto* extra = static_cast<PF_SmartRenderExtra*>(call.extra);
    PF_EffectWorld* world = nullptr;
    EXPECT_EQ(extra->cb->checkout_output(call.in->effect_ref, &world), 516);
    EXPECT_EQ(extra->cb->checkout_layer_pixels(call.in->effect_ref, 8, &world), 516);
    EXPECT_EQ(extra->cb->checkout_layer_pixels(call.in->effect_ref, 7, &world), 0);
    EXPECT_EQ(extra->cb->checkout_layer_pixels(call.in->effect_ref, 7, &world), 516);
    EXPECT_EQ(extra->cb->checkout_output(call.in->effect_ref, &world), 0);
    EXPECT_EQ(extra->cb->checkin_layer_pixels(call.in->effect_ref, 7), 0);
    return 0;
  });
  instance.render(0, Depth::bits8, out);
  EXPECT_EQ(listener.texts(host::MessageKind::protocol).size(), 3u);
}

TEST_F(TestEffect, preRenderDataIsTheHostsEvenAfterAFailure) {
  host::Effect effect(ae, module);
  {
    host::Instance instance(effect, source);
    host::Image out;
    static int deleted = 0;
    deleted = 0;
    on(PF_Cmd_SMART_PRE_RENDER, [](const TestCall& call) {
      auto* extra = static_cast<PF_PreRenderExtra*>(call.extra);
      extra->output->pre_render_data = &deleted;
      extra->output->delete_pre_render_data_func = [](void* data) { ++*static_cast<int*>(data); };
      return 4;
    });
    EXPECT_THROW(instance.render(0, Depth::bits8, out), host::CommandError);
    EXPECT_EQ(deleted, 1);
    on(PF_Cmd_SMART_PRE_RENDER, [](const TestCall& call) {
      auto* extra = static_cast<PF_PreRenderExtra*>(call.extra);
      extra->output->pre_render_data = call.in->utils->host_new_handle(64);
      return 517;
    });
    EXPECT_THROW(instance.render(0, Depth::bits8, out), host::Cancelled);
    run(nullptr);
  }
  expectNothingOutstanding();
}

TEST_F(TestEffect, cacheKeysDifferInWhatTheFrameDependsOn) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  host::Image out;
  const auto key = [&](std::int32_t frame, Depth depth) {
    host::RenderCopy copy = instance.renderCopy();
    copy.render(frame, depth, out);
    return copy.lastCacheKey();
  };
  const std::string first = key(0, Depth::bits8);
  EXPECT_EQ(key(0, Depth::bits8), first);
  EXPECT_NE(key(1, Depth::bits8), first);
  EXPECT_NE(key(0, Depth::bits16), first);
  instance.param("Amount").set(11.0);
  const std::string changed = key(0, Depth::bits8);
  EXPECT_NE(changed, first);
  instance.param("Curve").setText("3");
  EXPECT_NE(key(0, Depth::bits8), changed);
}

TEST_F(TestEffect, everyRefusalOfARenderIsSurvivedAndLeavesNothing) {
  using Kind = host::CallKind;
  for (const Kind kind : {Kind::newHandle, Kind::checkoutLayer, Kind::iterate, Kind::guidMixIn,
                          Kind::checkoutPixels, Kind::checkoutOutput}) {
    {
      host::Effect effect(ae, module);
      host::Instance instance(effect, source);
      host::RenderCopy copy = instance.renderCopy();
      host::Image out;
      ae.faults().arm(kind, 1, 4, true);
      if (kind == Kind::newHandle) {
        copy.render(0, Depth::bits8, out);  // the test effect does without its block
      } else {
        EXPECT_THROW(copy.render(0, Depth::bits8, out), host::CommandError)
            << static_cast<int>(kind);
      }
      EXPECT_GT(ae.faults().injected(), 0u);
      ae.faults().disarm();
      ae.faults().resetCounts();
      copy.render(0, Depth::bits8, out);
      expectInverted(out, 0, 0.5 / 255);
    }
    expectNothingOutstanding();
  }
}

TEST_F(TestEffect, plainRenderSendsItsThreeCommands) {
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  host::Image out;
  instance.render(0, Depth::bits8, out);
  std::vector<std::int32_t> order;
  // The copy for plain renders is made at the first one.
  instance.render(0, Depth::bits16, out, host::RenderPath::classic);
  run([&](const TestCall& call) -> std::optional<std::int32_t> {
    if (call.command == PF_Cmd_ARBITRARY_CALLBACK) return std::nullopt;
    order.push_back(call.command);
    if (call.command == PF_Cmd_FRAME_SETUP) {
      EXPECT_EQ(call.out->width, 40);
      EXPECT_EQ(call.out->height, 20);
      call.out->frame_data = call.in->utils->host_new_handle(8);
    } else {
      EXPECT_NE(call.in->frame_data, nullptr);
    }
    if (call.command == PF_Cmd_FRAME_SETDOWN) {
      call.in->utils->host_dispose_handle(call.in->frame_data);
    }
    return std::nullopt;
  });
  instance.render(6, Depth::bits16, out, host::RenderPath::classic);
  run(nullptr);
  EXPECT_EQ(order, (std::vector<std::int32_t>{10, 11, 12}));
  for (std::int32_t x = 0; x < 40; ++x) {
    EXPECT_NEAR(FlickerSource::red(out, x, 4), FlickerSource::level(6, x, 40), 0.5 / 32768);
  }
  EXPECT_THROW(instance.render(6, Depth::float32, out, host::RenderPath::classic), host::Error);
  EXPECT_THROW(instance.render(10, Depth::bits8, out), host::Error);
}

TEST_F(TestEffect, savedValuesComeBackByTheirIds) {
  host::Effect effect(ae, module);
  host::SavedInstance saved;
  {
    host::Instance instance(effect, source);
    instance.param("Amount").setAt(1, 5.25);
    instance.param("Amount").setAt(3, 9.0);
    instance.param("Curve").setText("42.5");
    instance.param("Spot").set(host::Point{-3.5, 100.25});
    saved = instance.save();
  }
  expectNothingOutstanding();
  EXPECT_EQ(saved.sequenceData.size(), 8u);
  EXPECT_EQ(saved.parameters.size(), 6u);  // all but the button
  for (host::SavedParameter& parameter : saved.parameters) parameter.name = "renamed";
  std::erase_if(saved.parameters, [](const auto& p) { return p.id == kMode; });
  host::Instance opened = host::Instance::open(effect, source, saved);
  EXPECT_EQ(opened.param(kAmount).keyframeCount(), 2u);
  EXPECT_EQ(opened.param(kAmount).value(1), 5.25);
  EXPECT_EQ(opened.param(kAmount).value(2), 7.125);
  EXPECT_EQ(opened.param(kCurve).text(), "42.50");
  EXPECT_EQ(opened.param(kSpot).point().x, -3.5);
  EXPECT_EQ(opened.param(kSpot).point().y, 100.25);
  EXPECT_EQ(opened.param(kMode).value(), 2.0);
}

TEST_F(TestEffect, savedKeyframesThatCannotBeAreRefusedOrHeldBack) {
  host::Effect effect(ae, module);
  host::SavedInstance saved;
  {
    host::Instance instance(effect, source);
    instance.param("Amount").setAt(1, 5.25);
    instance.param("Amount").setAt(3, 9.0);
    saved = instance.save();
  }
  const auto amount =
      std::ranges::find_if(saved.parameters, [](const auto& p) { return p.name == "Amount"; });
  ASSERT_NE(amount, saved.parameters.end());
  // Times count in 32 bits: a frame far beyond the layer is held at their end.
  amount->keys[1].frame = std::numeric_limits<std::int32_t>::max();
  host::Instance opened = host::Instance::open(effect, source, saved);
  EXPECT_EQ(opened.param("Amount").keyframeCount(), 2u);
  EXPECT_EQ(opened.param("Amount").value(1), 5.25);
  EXPECT_NEAR(opened.param("Amount").value(9), 5.25, 1e-3);
  for (const std::int32_t second : {1, 0}) {
    amount->keys[1].frame = second;
    EXPECT_THROW(host::Instance::open(effect, source, saved), host::Error) << second;
  }
}

}  // namespace
