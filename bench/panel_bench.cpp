// bench/panel_bench.cpp — one draw of the panel: the effect's work, and apart from it the host's
// recording and painting.
#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>

#include "host/drawing_raster.h"
#include "host/effect.h"
#include "host/panel.h"

namespace {

// Four grey pixels whose level changes from frame to frame.
class TinySource final : public host::FrameSource {
 public:
  explicit TinySource(std::int32_t frames) {
    info_.width = 2;
    info_.height = 2;
    info_.frameCount = frames;
  }
  const host::LayerInfo& info() const override { return info_; }
  void read(std::int32_t frame, host::Image& image) override {
    const auto level = static_cast<std::uint8_t>(90 + frame * 37 % 70);
    const std::uint8_t pixels[8] = {255, level, level, level, 255, level, level, level};
    for (std::int32_t y = 0; y < 2; ++y) std::memcpy(image.row(y), pixels, sizeof pixels);
  }

 private:
  host::LayerInfo info_;
};

// The effect on an analysed layer, its panel open.
struct Visit {
  explicit Visit(std::int32_t frames)
      : module(VARILUM_EFFECT_PATH),
        ae(host::Role::afterEffects),
        effect(ae, module),
        source(frames),
        instance(effect, source) {
    instance.press("Analyze");
    panel = std::make_unique<host::Panel>(instance);
    panel->drawUntilReady();
  }
  host::EffectModule module;
  host::Host ae;
  host::Effect effect;
  TinySource source;
  host::Instance instance;
  std::unique_ptr<host::Panel> panel;
};

// The effect's work and the host's recording of it.
void draw(benchmark::State& state) {
  Visit visit(static_cast<std::int32_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(&visit.panel->draw());
}

// The host's share of it: the same record made anew, point by point, without the effect.
void recordAgain(benchmark::State& state) {
  Visit visit(static_cast<std::int32_t>(state.range(0)));
  const host::DrawingRecord drawn = visit.panel->shown();
  for (auto _ : state) {
    host::DrawingRecord record;
    for (const host::DrawnPrimitive& from : drawn.primitives) {
      host::DrawnPrimitive to;
      to.kind = from.kind;
      to.colour = from.colour;
      to.text = from.text;
      for (const host::DrawnFigure& figure : from.figures) {
        auto& points = to.figures.emplace_back().points;
        for (const host::DrawnPoint& point : figure.points) points.push_back(point);
      }
      // A stroked path is copied from the path object, as the host does it.
      record.primitives.push_back(to);
    }
    benchmark::DoNotOptimize(record.primitives.data());
  }
}

// The recorded drawing put on pixels, without the effect.
void paint(benchmark::State& state) {
  Visit visit(static_cast<std::int32_t>(state.range(0)));
  host::RasterOptions options;
  options.area = {0, 0, 560, 332};
  for (auto _ : state) {
    host::Raster raster(visit.panel->shown(), options);
    benchmark::DoNotOptimize(raster.width());
  }
}

BENCHMARK(draw)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(recordAgain)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(paint)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);

}  // namespace
