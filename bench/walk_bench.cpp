// bench/walk_bench.cpp — the walk over a full-HD frame, with a memory copy and bare counting as
// floors. Counter `ratio`: time in copies of the same frame, measured in the same process.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <ctime>
#include <limits>
#include <string>

#include "bench/bench_picture.h"
#include "stats/compute_frame_stats.h"
#include "stats/luminance.h"
#include "stats/pixel_walk.h"

namespace varilum::bench {
namespace {

// Processor time, so that a busy machine does not tilt the ratios.
double cpuSeconds() {
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

void copyFrame(const BenchPicture& picture, std::vector<std::byte>& target) {
  std::memcpy(target.data(), picture.bytes.data(), target.size());
  benchmark::DoNotOptimize(target.data());
  benchmark::ClobberMemory();
}

// The best of several means, taken just before the measurement it belongs to.
double copySeconds(const BenchPicture& picture) {
  std::vector<std::byte> target(picture.bytes.size());
  copyFrame(picture, target);
  double best = std::numeric_limits<double>::max();
  for (int round = 0; round < 8; ++round) {
    const double start = cpuSeconds();
    for (int i = 0; i < 10; ++i) copyFrame(picture, target);
    best = std::min(best, (cpuSeconds() - start) / 10);
  }
  return best;
}

template <class Body>
void measure(benchmark::State& state, const BenchPicture& picture, Body body) {
  const double floor = copySeconds(picture);
  const double start = cpuSeconds();
  for (auto _ : state) body();
  const double each = (cpuSeconds() - start) / static_cast<double>(state.iterations());
  state.counters["ratio"] = each / floor;
  state.counters["copy_us"] = floor * 1e6;
}

void walk(benchmark::State& state, PixelDepth depth, Content content, std::int32_t step) {
  const BenchPicture picture = makePicture(depth, content);
  measure(state, picture, [&] {
    FrameStats stats;
    FrameHistogram histogram;
    resetFrameStats(stats);
    Rect rect{0, 0, kWidth, kHeight};
    computeFrameStats(stats, histogram, picture.pixels, rect, 0, false, step);
    benchmark::DoNotOptimize(stats);
    benchmark::DoNotOptimize(histogram);
  });
}

void copy(benchmark::State& state, PixelDepth depth) {
  const BenchPicture picture = makePicture(depth, Content::natural);
  std::vector<std::byte> target(picture.bytes.size());
  for (auto _ : state) copyFrame(picture, target);
}

// Four bare counts a pixel, in one table a channel; blue stands in for the luminance too.
void bareCounts(benchmark::State& state, Content content) {
  const BenchPicture picture = makePicture(PixelDepth::bits8, content);
  const auto* pixels = reinterpret_cast<const std::uint8_t*>(picture.bytes.data());
  measure(state, picture, [&] {
    std::uint32_t tables[4][kLevels] = {};
    for (std::size_t i = 0; i < picture.bytes.size(); i += 4) {
      ++tables[0][pixels[i + 1]];
      ++tables[1][pixels[i + 2]];
      ++tables[2][pixels[i + 3]];
      ++tables[3][pixels[i + 3]];
    }
    benchmark::DoNotOptimize(tables);
  });
}

// The rule in its plainest form: three table lookups in doubles and four counts a pixel.
void plainRule(benchmark::State& state, Content content) {
  const BenchPicture picture = makePicture(PixelDepth::bits8, content);
  const auto* pixels = reinterpret_cast<const std::uint8_t*>(picture.bytes.data());
  LuminanceWeights weights;
  fillLuminanceWeights(weights);
  measure(state, picture, [&] {
    std::uint32_t tables[4][kLevels] = {};
    for (std::size_t i = 0; i < picture.bytes.size(); i += 4) {
      const std::uint8_t red = pixels[i + 1];
      const std::uint8_t green = pixels[i + 2];
      const std::uint8_t blue = pixels[i + 3];
      const int level =
          static_cast<int>(weights.red[red] + weights.green[green] + weights.blue[blue] + 0.5);
      ++tables[0][level];
      ++tables[1][red];
      ++tables[2][green];
      ++tables[3][blue];
    }
    benchmark::DoNotOptimize(tables);
  });
}

const bool kRegistered = [] {
  const auto unit = [](benchmark::internal::Benchmark* bench) {
    bench->Unit(benchmark::kMicrosecond);
  };
  for (const auto depth : {PixelDepth::bits8, PixelDepth::bits16, PixelDepth::float32}) {
    const std::string suffix = std::string("/") + nameOf(depth);
    unit(benchmark::RegisterBenchmark(("floor/copy" + suffix).c_str(),
                                      [=](benchmark::State& state) { copy(state, depth); }));
    for (const auto content : {Content::natural, Content::flat}) {
      for (const std::int32_t step : {1, 5}) {
        const std::string name =
            "walk" + suffix + "/" + nameOf(content) + "/step" + std::to_string(step);
        unit(benchmark::RegisterBenchmark(
            name.c_str(), [=](benchmark::State& state) { walk(state, depth, content, step); }));
      }
    }
  }
  for (const auto content : {Content::natural, Content::flat}) {
    unit(
        benchmark::RegisterBenchmark((std::string("floor/bare_counts/") + nameOf(content)).c_str(),
                                     [=](benchmark::State& state) { bareCounts(state, content); }));
    unit(benchmark::RegisterBenchmark((std::string("floor/plain_rule/") + nameOf(content)).c_str(),
                                      [=](benchmark::State& state) { plainRule(state, content); }));
  }
  return true;
}();

}  // namespace
}  // namespace varilum::bench
