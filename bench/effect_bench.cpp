// bench/effect_bench.cpp — the whole effect in the embedded host, through its entry point.
//
// Floors run by turns: a copy of the same bytes, and for corrections the same iteration of the host
// with a callback that only copies the pixel.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "bench/against_floor.h"
#include "host/instance.h"

namespace {

using host::Depth;
using host::Image;
using host::Instance;
using varilum::bench::againstFloor;

constexpr std::int32_t kManyFrames = 100000;
constexpr int kSmoothing = 2;  // choices of "Deflicker method"
constexpr int kKeyframes = 1;

// Frames that cost nothing to read: the picture is painted once and stays in the image.
class StillSource : public host::FrameSource {
 public:
  StillSource(std::int32_t width, std::int32_t height, std::int32_t frames, Depth depth) {
    info_.width = width;
    info_.height = height;
    info_.frameCount = frames;
    info_.depth = depth;
  }
  const host::LayerInfo& info() const override { return info_; }
  void read(std::int32_t frame, Image& image) override {
    // A level of its own for each frame; the rest is whatever the image held.
    std::memset(image.row(0), 60 + frame % 50, static_cast<std::size_t>(image.rowBytes()));
  }

 private:
  host::LayerInfo info_;
};

struct Scene {
  Scene(std::int32_t width, std::int32_t height, std::int32_t frames, Depth depth)
      : source(width, height, frames, depth),
        module(VARILUM_EFFECT_PATH),
        app(host::Role::afterEffects, {13, 14}, oneThread()),
        effect(app, module),
        fx(effect, source) {}

  static host::HostOptions oneThread() {
    host::HostOptions options;
    options.threads = 1;
    return options;
  }

  StillSource source;
  host::EffectModule module;
  host::Host app;
  host::Effect effect;
  Instance fx;
};

// Targets of all frames as an edit leads to them: every parameter checked out at every frame.
void targetsWithCheckouts(benchmark::State& state) {
  Scene scene(8, 8, kManyFrames, Depth::bits8);
  scene.fx.press("Analyze");
  const bool keyframes = state.range(0) == kKeyframes;
  scene.fx.param("Deflicker method").set(keyframes ? kKeyframes : kSmoothing);
  scene.fx.param("Luminance").setTextAt(0, "100");
  scene.fx.param("Luminance").setTextAt(kManyFrames - 1, "140");
  double method = 1.0;
  for (auto _ : state) {
    // Any edit of the correction computes the targets again.
    scene.fx.param("Correction method").set(method);
    method = method < 3.0 ? method + 1.0 : 1.0;
  }
  state.SetItemsProcessed(state.iterations() * kManyFrames);
}
BENCHMARK(targetsWithCheckouts)
    ->ArgName("method")
    ->Arg(kSmoothing)
    ->Arg(kKeyframes)
    ->Unit(benchmark::kMillisecond);

void flatten(benchmark::State& state) {
  Scene scene(8, 8, kManyFrames, Depth::bits8);
  std::size_t bytes = 0;
  for (auto _ : state) {
    const host::SavedInstance saved = scene.fx.save();
    bytes = saved.sequenceData.size();
    benchmark::DoNotOptimize(saved.sequenceData.data());
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}
BENCHMARK(flatten)->Unit(benchmark::kMillisecond);

void resetup(benchmark::State& state) {
  Scene scene(8, 8, kManyFrames, Depth::bits8);
  const host::SavedInstance saved = scene.fx.save();
  for (auto _ : state) {
    const Instance opened = Instance::open(scene.effect, scene.source, saved);
    benchmark::DoNotOptimize(&opened);
  }
  state.SetBytesProcessed(state.iterations() *
                          static_cast<std::int64_t>(saved.sequenceData.size()));
}
BENCHMARK(resetup)->Unit(benchmark::kMillisecond);

// Floor of the two above: one copy of as many bytes into new memory.
void copyOfSavedBytes(benchmark::State& state) {
  Scene scene(8, 8, kManyFrames, Depth::bits8);
  const host::SavedInstance saved = scene.fx.save();
  for (auto _ : state) {
    std::vector<std::byte> copy = saved.sequenceData;
    benchmark::DoNotOptimize(copy.data());
  }
  state.SetBytesProcessed(state.iterations() *
                          static_cast<std::int64_t>(saved.sequenceData.size()));
}
BENCHMARK(copyOfSavedBytes)->Unit(benchmark::kMillisecond);

// A 1080p frame by the smart pair, on a layer that has been analysed.
struct RenderScene {
  RenderScene(Depth itsDepth, const char* parameter, double value)
      : depth(itsDepth), scene(1920, 1080, 3, itsDepth) {
    scene.fx.param(parameter).set(value);
    scene.fx.press("Analyze");
  }
  void render() {
    scene.fx.render(1, depth, output);
    benchmark::DoNotOptimize(output.row(0));
  }
  Depth depth;
  Scene scene;
  Image output;
};

// Floor: the same through a callback that only copies the pixel, as "Don't deflicker" chooses it.
void correctFrame(benchmark::State& state) {
  const auto depth = static_cast<Depth>(state.range(0));
  RenderScene corrected(depth, "Correction method", static_cast<double>(state.range(1)));
  RenderScene kept(depth, "Don't deflicker", 1);
  againstFloor(
      state, [&] { kept.render(); }, [&] { corrected.render(); });
}
BENCHMARK(correctFrame)
    ->ArgNames({"bits", "method"})
    ->ArgsProduct({{8, 16, 32}, {1, 2, 3}})
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();

// The host's iteration with that copying callback; floor: a memory copy of the frame.
void keepFrame(benchmark::State& state) {
  const auto depth = static_cast<Depth>(state.range(0));
  RenderScene kept(depth, "Don't deflicker", 1);
  const std::vector<std::byte> from(static_cast<std::size_t>(1920 * 1080 * pixelBytes(depth)));
  std::vector<std::byte> to(from.size());
  const auto copy = [&] {
    std::memcpy(to.data(), from.data(), from.size());
    benchmark::ClobberMemory();
  };
  againstFloor(state, copy, [&] { kept.render(); });
}
BENCHMARK(keepFrame)
    ->ArgName("bits")
    ->Arg(8)
    ->Arg(16)
    ->Arg(32)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();

}  // namespace
