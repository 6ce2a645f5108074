// tests/host/real_panel_test.cpp — the effect's own panel, drawn and clicked through its host.
#include <gmock/gmock.h>

#include <cmath>

#include "host/effect.h"
#include "host/panel.h"
#include "tests/host/flicker_source.h"
#include "tests/host/recording_listener.h"

namespace {

using testing::Contains;
using testing::Not;

struct PanelCase {
  const char* name;
  host::Role role;
  host::Stress stress;
  host::AsyncDelay async;
};

class RealPanel : public testing::TestWithParam<PanelCase> {
 protected:
  RealPanel()
      : module(VARILUM_EFFECT_PATH),
        ae(GetParam().role,
           GetParam().role == host::Role::premiere ? host::ApiVersion{13, 4} : host::ApiVersion{},
           options()) {
    ae.setListener(&listener);
  }
  ~RealPanel() override {
    EXPECT_TRUE(ae.outstanding().nothing()) << ae.outstanding().describe();
    EXPECT_EQ(listener.complaints(), "");
  }

  static host::HostOptions options() {
    host::HostOptions chosen;
    chosen.stress = GetParam().stress;
    return chosen;
  }
  static host::PanelOptions look() {
    host::PanelOptions chosen;
    chosen.async = GetParam().async;
    return chosen;
  }
  // Analysing in the Premiere role opens windows; the panel there measures frames one by one.
  bool analyzes() const { return GetParam().role == host::Role::afterEffects; }

  host::EffectModule module;
  RecordingListener listener;
  host::Host ae;
};

TEST_P(RealPanel, MeasuresTheFrameUnderTheCursor) {
  FlickerSource source(12);
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  host::Panel panel(instance, look());
  for (const std::int32_t frame : {0, 7, 3}) {
    instance.goTo(frame);
    panel.drawUntilReady();
    const auto texts = panel.shown().texts();
    EXPECT_THAT(texts, Contains("frame " + std::to_string(frame)));
    EXPECT_THAT(texts, Contains("3072 of 3072 pixels analyzed"));
    EXPECT_THAT(texts, Not(Contains("Calculating histogram...")));
  }
}

TEST_P(RealPanel, TheFirstDrawWaitsForTheFrame) {
  if (!analyzes() || GetParam().async.draws == 0) GTEST_SKIP() << "the frame is there at once";
  FlickerSource source(12);
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  host::Panel panel(instance, look());
  EXPECT_THAT(panel.draw().texts(), Contains("Calculating histogram..."));
  EXPECT_TRUE(panel.waiting());
}

TEST_P(RealPanel, OutsideTheLayerThereIsNoHistogram) {
  FlickerSource source(12);
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  host::Panel panel(instance, look());
  for (const std::int32_t frame : {12, 1000, -5}) {
    panel.placeCursor(frame);
    panel.drawUntilReady();
    const auto texts = panel.shown().texts();
    EXPECT_THAT(texts, Contains("frame " + std::to_string(frame)));
    for (const auto& mark : panel.shown().primitives) EXPECT_NE(mark.kind, host::DrawnKind::fill);
  }
}

TEST_P(RealPanel, OneFrameLayersAreDrawn) {
  FlickerSource source(1);
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  if (analyzes()) instance.press("Analyze");
  host::Panel panel(instance, look());
  panel.drawUntilReady();
  EXPECT_THAT(panel.shown().texts(), Contains("frame 0"));
  for (const auto& mark : panel.shown().primitives) {
    for (const auto& figure : mark.figures) {
      for (const auto& point : figure.points) {
        EXPECT_TRUE(std::isfinite(point.x) && std::isfinite(point.y));
        EXPECT_GE(point.x, 0.0F);
        EXPECT_LE(point.x, 400.0F);
      }
    }
  }
}

TEST_P(RealPanel, DrawsNothingWhenToldOrInTheTitle) {
  FlickerSource source(4);
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  host::Panel panel(instance, look());
  EXPECT_TRUE(panel.draw(host::PanelArea::control, true).primitives.empty());
  EXPECT_TRUE(panel.draw(host::PanelArea::title).primitives.empty());
  EXPECT_FALSE(panel.draw().primitives.empty());
}

TEST_P(RealPanel, TheHandleSetsWholeLevelsAndLeavesHostAndEffectAgreed) {
  FlickerSource source(12);
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  if (analyzes()) instance.press("Analyze");
  host::Panel panel(instance, look());
  panel.drawUntilReady();
  // The handle's triangle is the last shape filled; its apex is the first point.
  const auto& marks = panel.shown().primitives;
  const auto handle = std::find_if(marks.rbegin(), marks.rend(), [](const auto& mark) {
    return mark.kind == host::DrawnKind::fill;
  });
  ASSERT_NE(handle, marks.rend());
  const auto apex = handle->figures.at(0).points.at(0);
  const auto x = static_cast<std::int32_t>(apex.x);
  const auto y = static_cast<std::int32_t>(apex.y) + 3;
  ASSERT_TRUE(panel.click({x, y}).wantsDrags);
  panel.drag({x + 500, y});
  EXPECT_EQ(instance.param("Luminance").text(), "255.00");
  panel.drag({x - 500, y});
  EXPECT_EQ(std::stod(instance.param("Luminance").text()), 0.0);
  const host::EventOutcome last = panel.release({9 + 337 / 2, y});
  EXPECT_TRUE(last.handled);
  const double level = std::stod(instance.param("Luminance").text());
  EXPECT_EQ(level, std::floor(level));
  EXPECT_NEAR(level, 127.5, 8.0);
}

INSTANTIATE_TEST_SUITE_P(
    Hosts, RealPanel,
    testing::Values(
        PanelCase{"friendly", host::Role::afterEffects, {}, {0, false}},
        PanelCase{"late", host::Role::afterEffects, {}, {2, false}},
        PanelCase{"emptyReceipts", host::Role::afterEffects, {}, {1, true}},
        PanelCase{
            "moving",
            host::Role::afterEffects,
            {.moveHandles = true, .poisonMemory = true, .rowPadding = 12, .withoutParams = true},
            {1, false}},
        PanelCase{"premiere", host::Role::premiere, {}, {1, false}}),
    [](const auto& chosen) { return chosen.param.name; });

// Long layers are drawn whole.
TEST(LongPanel, DrawsAHundredThousandFrames) {
  constexpr std::int32_t kFrames = 100000;
  host::EffectModule module(VARILUM_EFFECT_PATH);
  host::Host ae(host::Role::afterEffects);
  FlickerSource source(kFrames, 4, 4);
  host::Effect effect(ae, module);
  host::Instance instance(effect, source);
  instance.press("Analyze");
  host::Panel panel(instance);
  instance.goTo(kFrames - 1);
  panel.drawUntilReady();
  std::size_t longest = 0;
  for (const auto& mark : panel.shown().primitives) {
    for (const auto& figure : mark.figures) {
      longest = std::max(longest, figure.points.size());
      for (const auto& point : figure.points) {
        ASSERT_GE(point.x, 9.0F - 8.0F);
        ASSERT_LE(point.x, 346.0F + 8.0F);
      }
    }
  }
  EXPECT_EQ(longest, static_cast<std::size_t>(kFrames));
  EXPECT_THAT(panel.shown().texts(), Contains("100000"));
}

}  // namespace
