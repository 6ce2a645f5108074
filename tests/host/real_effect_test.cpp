// tests/host/real_effect_test.cpp — the effect itself, driven through its entry point.
#include <gtest/gtest.h>

#include <thread>

#include "host/effect.h"
#include "host/error.h"
#include "host/instance.h"
#include "tests/host/flicker_source.h"
#include "tests/host/recording_listener.h"

namespace {

using host::Depth;

constexpr std::int32_t kFrames = 40;

struct Case {
  const char* name;
  host::Stress stress;
  std::int32_t threads;
};

class RealEffect : public testing::TestWithParam<Case> {
 protected:
  RealEffect() : module(VARILUM_EFFECT_PATH), ae(host::Role::afterEffects, {}, options()) {
    ae.setListener(&listener);
  }

  ~RealEffect() override {
    EXPECT_TRUE(ae.outstanding().nothing()) << ae.outstanding().describe();
    EXPECT_EQ(listener.complaints(), "");
  }

  static host::HostOptions options() {
    host::HostOptions chosen;
    chosen.stress = GetParam().stress;
    chosen.threads = GetParam().threads;
    return chosen;
  }

  // Largest jump of mean brightness between neighbouring frames.
  template <typename Render>
  static double flicker(Render render) {
    double worst = 0.0;
    double last = render(0);
    for (std::int32_t frame = 1; frame < kFrames; ++frame) {
      const double now = render(frame);
      worst = std::max(worst, std::abs(now - last));
      last = now;
    }
    return worst;
  }

  static double sourceFlicker(FlickerSource& source, Depth depth) {
    host::Image image(source.info().width, source.info().height, depth);
    return flicker([&](std::int32_t frame) {
      source.read(frame, image);
      return FlickerSource::mean(image);
    });
  }

  host::EffectModule module;
  RecordingListener listener;
  host::Host ae;
};

TEST_P(RealEffect, steadiesAFlickeringClipAtEveryDepth) {
  for (const Depth depth : {Depth::bits8, Depth::bits16, Depth::float32}) {
    SCOPED_TRACE(static_cast<int>(depth));
    FlickerSource source(kFrames, 64, 48, depth);
    host::Effect effect(ae, module);
    host::Instance instance(effect, source);
    host::Image out;
    instance.press("Analyze");
    const double before = sourceFlicker(source, depth);
    const double after = flicker([&](std::int32_t frame) {
      instance.render(frame, depth, out);
      return FlickerSource::mean(out);
    });
    EXPECT_GT(before, 0.15);
    EXPECT_LT(after, before / 8);
  }
}

TEST_P(RealEffect, bannerUntilAnalysed) {
  FlickerSource source(kFrames);
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  EXPECT_TRUE(instance.watermarked());
  host::Image plain(source.info().width, source.info().height, Depth::bits8);
  source.read(3, plain);
  host::Image out;
  instance.render(3, Depth::bits8, out);
  // The band is an eighth of the width high, in the middle; the rest is as it was.
  EXPECT_EQ(std::memcmp(out.row(0), plain.row(0), static_cast<std::size_t>(plain.rowBytes())), 0);
  EXPECT_NE(std::memcmp(out.row(24), plain.row(24), static_cast<std::size_t>(plain.rowBytes())), 0);
  instance.press("Analyze");
  EXPECT_FALSE(instance.watermarked());
}

TEST_P(RealEffect, savedAndOpenedRendersTheSame) {
  FlickerSource source(kFrames);
  host::Effect effect(ae, module);
  host::SavedInstance saved;
  host::Image first;
  {
    host::Instance instance(effect, source);
    instance.param("Number of smoothing frames").set(9);
    instance.press("Analyze");
    instance.render(7, Depth::bits8, first);
    saved = instance.save();
  }
  EXPECT_TRUE(ae.outstanding().nothing()) << ae.outstanding().describe();
  host::Instance again = host::Instance::open(effect, source, saved);
  EXPECT_EQ(again.param("Number of smoothing frames").value(), 9.0);
  host::Image second;
  again.render(7, Depth::bits8, second);
  for (std::int32_t y = 0; y < first.height(); ++y) {
    ASSERT_EQ(std::memcmp(first.row(y), second.row(y), static_cast<std::size_t>(first.rowBytes())),
              0);
  }
}

TEST_P(RealEffect, cancelKeepsWhatWasDone) {
  FlickerSource source(kFrames);
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  listener.stopAtStep = 4;
  EXPECT_THROW(instance.press("Analyze"), host::Cancelled);
  EXPECT_EQ(source.reads(), 4);
}

TEST_P(RealEffect, aFailingSourceComesBackAsItsOwnException) {
  FlickerSource source(kFrames);
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  source.beforeRead = [](std::int32_t frame) {
    if (frame == 5) throw std::runtime_error("frame 5 is unreadable");
  };
  EXPECT_THROW(
      {
        try {
          instance.press("Analyze");
        } catch (const std::runtime_error& e) {
          EXPECT_STREQ(e.what(), "frame 5 is unreadable");
          throw;
        }
      },
      std::runtime_error);
}

TEST_P(RealEffect, copiesRenderOnSeveralThreads) {
  FlickerSource source(kFrames);
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  instance.press("Analyze");
  std::vector<double> alone(kFrames);
  host::Image out;
  for (std::int32_t frame = 0; frame < kFrames; ++frame) {
    instance.render(frame, Depth::bits8, out);
    alone[static_cast<std::size_t>(frame)] = FlickerSource::mean(out);
  }
  std::vector<double> together(kFrames);
  std::atomic<std::int32_t> next{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < 3; ++t) {
    threads.emplace_back([&, copy = instance.renderCopy()]() mutable {
      host::Image image;
      for (std::int32_t frame = next++; frame < kFrames; frame = next++) {
        copy.render(frame, Depth::bits8, image);
        together[static_cast<std::size_t>(frame)] = FlickerSource::mean(image);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(alone, together);
}

TEST_P(RealEffect, plainRenderAgreesWithTheSmartPair) {
  FlickerSource source(kFrames);
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  instance.press("Analyze");
  host::Image smart;
  host::Image plain;
  for (const Depth depth : {Depth::bits8, Depth::bits16}) {
    for (const std::int32_t frame : {0, 11, kFrames - 1}) {
      instance.render(frame, depth, smart, host::RenderPath::smart);
      instance.render(frame, depth, plain, host::RenderPath::classic);
      EXPECT_EQ(FlickerSource::mean(smart), FlickerSource::mean(plain)) << frame;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(
    Hosts, RealEffect,
    testing::Values(
        Case{"friendly", {}, 0},
        Case{"moving", {.moveHandles = true, .poisonMemory = true, .withoutParams = true}, 1},
        Case{"padded", {.poisonMemory = true, .rowPadding = 12, .shuffleRows = true}, 4},
        Case{"displaced", {.rowPadding = 60, .originX = 5, .originY = 3}, 2}),
    [](const auto& chosen) { return chosen.param.name; });

}  // namespace
