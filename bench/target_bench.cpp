// bench/target_bench.cpp — targets of 100 000 frames; floor: adding up one window's worth of
// numbers for each frame and level array.
#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "stats/desired_luminance.h"

namespace varilum::bench {
namespace {

constexpr std::size_t kTargetFrames = 100000;

class FixedParameters : public TargetParameters {
 public:
  explicit FixedParameters(std::int32_t reach) : reach_(reach) {}

  std::int32_t dontDeflicker(std::int32_t, bool& on) override {
    on = false;
    return 0;
  }
  std::int32_t keyframe(std::int32_t frame, double& luminance, float& spread) override {
    luminance = frame % 256;
    spread = 10.0f;
    return 0;
  }
  std::int32_t smoothingFrames(std::int32_t, std::int32_t& frames) override {
    frames = reach_;
    return 0;
  }

 private:
  std::int32_t reach_;
};

// Means of frames have single precision, unless bright pixels weigh more.
enum class Means { plain, favorBrighter };

struct Arrays {
  explicit Arrays(Means means = Means::plain)
      : luminance(kTargetFrames),
        spread(kTargetFrames),
        desired(kTargetFrames),
        desiredSpread(kTargetFrames) {
    for (std::size_t i = 0; i < kTargetFrames; ++i) {
      const auto t = static_cast<double>(i);
      luminance[i] = i % 97 == 0 ? -1.0 : 120.0 + 20.0 * std::sin(t * 0.9) + std::sin(t * 0.01);
      if (means == Means::plain) luminance[i] = static_cast<float>(luminance[i]);
      spread[i] = 30.0 + 5.0 * std::sin(t * 1.3);
    }
  }
  std::vector<double> luminance, spread, desired, desiredSpread;
};

void targets(benchmark::State& state, bool keyframes, Means means) {
  Arrays arrays(means);
  FixedParameters parameters(static_cast<std::int32_t>(state.range(0)));
  TargetParameters* asked = &parameters;
  benchmark::DoNotOptimize(asked);
  for (auto _ : state) {
    const auto error = computeDesiredLuminance(
        *asked, keyframes, {arrays.luminance, arrays.spread, arrays.desired, arrays.desiredSpread});
    if (error != 0) state.SkipWithError("unexpected error");
    benchmark::ClobberMemory();
  }
}

void smoothing(benchmark::State& state) {
  targets(state, false, Means::plain);
}
void smoothingFavorBrighter(benchmark::State& state) {
  targets(state, false, Means::favorBrighter);
}
void keyframes(benchmark::State& state) {
  targets(state, true, Means::plain);
}

void windowSums(benchmark::State& state) {
  Arrays arrays;
  const auto reach = static_cast<std::size_t>(state.range(0));
  for (auto _ : state) {
    for (std::size_t i = reach; i + reach < kTargetFrames; ++i) {
      double sum = 0.0;
      double spreadSum = 0.0;
      for (std::size_t j = i - reach; j <= i + reach; ++j) {
        sum += arrays.luminance[j];
        spreadSum += arrays.spread[j];
      }
      arrays.desired[i] = sum;
      arrays.desiredSpread[i] = spreadSum;
    }
    benchmark::ClobberMemory();
  }
}

BENCHMARK(windowSums)->Name("floor/window_sums")->Arg(60)->Unit(benchmark::kMillisecond);
BENCHMARK(smoothing)
    ->Name("targets/smoothing")
    ->Arg(5)
    ->Arg(60)
    ->Arg(1000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(smoothingFavorBrighter)
    ->Name("targets/smoothing_favor_brighter")
    ->Arg(5)
    ->Arg(60)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(keyframes)->Name("targets/keyframes")->Arg(0)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace varilum::bench
