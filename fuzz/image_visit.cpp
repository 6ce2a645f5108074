// fuzz/image_visit.cpp — a saved image opened on some layer, and all that a user then does with it.
#include "fuzz/image_visit.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "fuzz/effect_under_test.h"
#include "fuzz/pattern_layer.h"
#include "host/instance.h"
#include "host/panel.h"

namespace fuzz {
namespace {

using host::Depth;
using host::Image;
using host::Instance;
using host::RenderPath;

using Bytes = std::vector<std::byte>;

// Sizes and places of both versions, as the effect has been writing them.
constexpr std::size_t kHeader14 = 5196;
constexpr std::size_t kRecord14 = 176;
constexpr std::size_t kHistogram14 = 4100;
constexpr std::size_t kHeader13 = 1068;
constexpr std::size_t kFrame13 = 4396;
constexpr std::size_t kLevels = 4 * sizeof(double);

template <class Value>
void put(Bytes& image, std::size_t offset, Value value) {
  if (offset + sizeof value > image.size()) return;
  std::memcpy(image.data() + offset, &value, sizeof value);
}

template <class Value>
Value get(const Bytes& image, std::size_t offset) {
  Value value{};
  if (offset + sizeof value > image.size()) breach("the effect saved too little");
  std::memcpy(&value, image.data() + offset, sizeof value);
  return value;
}

void repair14(const VisitPlan& plan, Bytes& image) {
  const std::size_t frames = plan.imageFrames % 8;
  const std::size_t slots = plan.imageSlots % 4 == 3 ? 30 : plan.imageSlots % 4;
  const std::size_t records = (plan.repairs & kRepairRecords) != 0 ? frames * kRecord14 : 0;
  const std::size_t cache = (plan.repairs & kRepairSlots) != 0 ? slots * kHistogram14 : 0;
  image.resize(kHeader14 + frames * kLevels + records + cache);
  put(image, 12, static_cast<std::int32_t>(frames));
  put(image, 16, static_cast<std::int32_t>(slots));
  put(image, 20, static_cast<std::uint32_t>(kHeader14));
  put(image, 24, static_cast<std::uint32_t>(records));
  put(image, 36, static_cast<std::uint32_t>(cache));
  put(image, 48, static_cast<std::uint32_t>(frames * sizeof(double)));
}

void repair(const VisitPlan& plan, std::int32_t version, Bytes& image) {
  if ((plan.repairs & kRepairSizes) != 0) {
    if (version == 14) {
      repair14(plan, image);
    } else {
      image.resize(kHeader13 + plan.imageFrames % 8 * (kLevels + kFrame13));
    }
  }
  if ((plan.repairs & kRepairVersion) != 0) put(image, 8, version);
  if ((plan.repairs & kRepairFlattened) != 0 && version == 14) put(image, 99, std::uint8_t{1});
}

// Mostly a few; one code in five stands for hundreds or thousands.
std::int32_t framesOf(std::uint8_t code) noexcept {
  return code < 205 ? 1 + code % 12 : (code - 204) * 97;
}

PatternLayer layerFor(const VisitPlan& plan) {
  constexpr Depth kDepths[] = {Depth::bits8, Depth::bits16, Depth::float32};
  const std::int32_t frames = (plan.repairs & kRepairLayer) != 0 ? std::max(plan.imageFrames % 8, 1)
                                                                 : framesOf(plan.frames);
  return {1 + plan.width % 48, 1 + plan.height % 48, frames, kDepths[plan.depth % 3]};
}

// Whatever was opened, what is saved is whole: counts, sizes and length agree.
void requireWhole(const Bytes& image) {
  if (image.empty()) return;  // the host refused the memory for it
  const auto frames = get<std::int32_t>(image, 12);
  const std::size_t levels = get<std::uint32_t>(image, 48);
  const std::size_t records = get<std::uint32_t>(image, 24);
  const std::size_t cache = get<std::uint32_t>(image, 36);
  if (get<std::int32_t>(image, 8) != 14 || get<std::uint8_t>(image, 99) == 0) {
    breach("the effect saved what is no flat image");
  }
  if (frames < 0 || levels != static_cast<std::size_t>(frames) * sizeof(double) ||
      (records != 0 && records != static_cast<std::size_t>(frames) * kRecord14) ||
      image.size() != kHeader14 + 4 * levels + records + cache) {
    breach("the effect saved sizes that do not agree");
  }
}

void usePanel(const VisitPlan& plan, Instance& fx) {
  host::Panel panel{fx};
  const auto does = [&](Act act) { return (plan.acts & act) != 0; };
  if (does(kDraw)) attempt([&] { panel.drawUntilReady(); });
  if (does(kClick)) attempt([&] { panel.click({plan.x, plan.y}); });
  if (does(kDrag)) {
    attempt([&] {
      if (panel.dragging()) panel.drag({plan.toX, plan.toY});
      panel.release({plan.toX, plan.toY});
    });
  }
  attempt([&] { panel.adjustCursor({plan.toX, plan.toY}); });
  attempt([&] { panel.close(); });
}

void edit(const VisitPlan& plan, host::Effect& effect, Instance& fx) {
  const auto count = static_cast<std::int32_t>(effect.parameters().size());
  attempt([&] { fx.param(plan.parameter % count).set(plan.value / 8.0); });
  attempt([&] { fx.param(plan.parameter % count).set(host::Point{plan.x / 8.0, plan.y / 8.0}); });
}

void use(const VisitPlan& plan, host::Effect& effect, Instance& fx, const PatternLayer& layer) {
  const auto does = [&](Act act) { return (plan.acts & act) != 0; };
  const std::int32_t frame = plan.frame % layer.info().frameCount;
  attempt([&] { fx.goTo(frame); });
  if (plan.method % 4 != 0) {
    attempt([&] { fx.param("Correction method").set(plan.method % 4); });
  }
  if (does(kEdit)) edit(plan, effect, fx);
  if ((plan.acts & (kDraw | kClick | kDrag)) != 0) attempt([&] { usePanel(plan, fx); });
  Image out;
  if (does(kRender)) attempt([&] { fx.render(frame, layer.info().depth, out); });
  if (does(kRenderClassic)) {
    attempt([&] { fx.render(frame, Depth::bits8, out, RenderPath::classic); });
  }
  if (does(kAnalyze) && layer.info().frameCount < 100) attempt([&] { fx.press("Analyze"); });
  attempt([&] { fx.watermarked(); });
}

}  // namespace

void visitImage(std::span<const std::uint8_t> input, std::int32_t version) {
  VisitPlan plan;
  if (input.size() < sizeof plan) return;
  std::memcpy(&plan, input.data(), sizeof plan);
  const auto bytes = std::as_bytes(input.subspan(sizeof plan));
  host::SavedInstance saved{{bytes.begin(), bytes.end()}, {}};
  repair(plan, version, saved.sequenceData);

  EffectUnderTest& test = effectUnderTest(plan.host);
  PatternLayer layer = layerFor(plan);
  host::SavedInstance again;
  attempt([&] {
    Instance fx = Instance::open(test.effect(), layer, saved);
    use(plan, test.effect(), fx, layer);
    again = fx.save();
    requireWhole(again.sequenceData);
  });
  test.requireNothingLeft();
  if ((plan.acts & kReopen) == 0) return;
  PatternLayer next{1 + plan.nextWidth % 48, 9, framesOf(plan.nextFrames), layer.info().depth};
  attempt([&] {
    Instance fx = Instance::open(test.effect(), next, again);
    use(plan, test.effect(), fx, next);
    requireWhole(fx.save().sequenceData);
  });
  test.requireNothingLeft();
}

}  // namespace fuzz
