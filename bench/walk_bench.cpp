// bench/walk_bench.cpp — the walk over a full-HD frame, with a memory copy and bare counting as
// floors. Counter `ratio`: time in copies of the same frames, measured in the same process.
//
// hot: the same frame again and again, which a large cache holds; ring: each time another of
// several frames that no cache holds together, as when a clip is analysed. Copies always go to one
// frame.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <ctime>
#include <limits>
#include <string>
#include <vector>

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

enum class Cache { hot, ring };

const char* cacheName(Cache cache) {
  return cache == Cache::hot ? "hot" : "ring";
}

// Copies of one picture, taken in turns.
class Frames {
 public:
  Frames(PixelDepth depth, Content content, Cache cache) {
    const BenchPicture picture = makePicture(depth, content);
    const std::size_t count = cache == Cache::hot ? 1 : kRingBytes / picture.bytes.size() + 1;
    for (std::size_t i = 0; i < count; ++i) {
      frames_.push_back(picture);
      frames_.back().pixels.data = frames_.back().bytes.data();
    }
  }

  const BenchPicture& next() {
    if (++at_ == frames_.size()) at_ = 0;
    return frames_[at_];
  }

 private:
  static constexpr std::size_t kRingBytes = std::size_t{128} << 20;

  std::vector<BenchPicture> frames_;
  std::size_t at_ = 0;
};

void copyFrame(const BenchPicture& picture, std::vector<std::byte>& target) {
  std::memcpy(target.data(), picture.bytes.data(), target.size());
  benchmark::DoNotOptimize(target.data());
  benchmark::ClobberMemory();
}

// The best of several means, taken just before the measurement it belongs to.
double copySeconds(Frames& frames) {
  std::vector<std::byte> target(frames.next().bytes.size());
  copyFrame(frames.next(), target);
  double best = std::numeric_limits<double>::max();
  for (int round = 0; round < 8; ++round) {
    const double start = cpuSeconds();
    for (int i = 0; i < 16; ++i) copyFrame(frames.next(), target);
    best = std::min(best, (cpuSeconds() - start) / 16);
  }
  return best;
}

template <class Body>
void measure(benchmark::State& state, Frames& frames, Body body) {
  const double floor = copySeconds(frames);
  const double start = cpuSeconds();
  for (auto _ : state) body(frames.next());
  const double each = (cpuSeconds() - start) / static_cast<double>(state.iterations());
  state.counters["ratio"] = each / floor;
  state.counters["copy_us"] = floor * 1e6;
}

void walk(benchmark::State& state, PixelDepth depth, Content content, Cache cache,
          std::int32_t step) {
  Frames frames(depth, content, cache);
  measure(state, frames, [&](const BenchPicture& picture) {
    FrameStats stats;
    FrameHistogram histogram;
    resetFrameStats(stats);
    Rect rect{0, 0, kWidth, kHeight};
    computeFrameStats(stats, histogram, picture.pixels, rect, 0, false, step);
    benchmark::DoNotOptimize(stats);
    benchmark::DoNotOptimize(histogram);
  });
}

// The walk by kernels that a lesser processor would use.
void walkBy(benchmark::State& state, const WalkKernels& kernels) {
  Frames frames(PixelDepth::bits8, Content::natural, Cache::hot);
  measure(state, frames, [&](const BenchPicture& picture) {
    FrameHistogram histogram;
    resetFrameHistogram(histogram);
    walkPixels(picture.pixels, {0, 0, kWidth, kHeight}, 1, histogram, kernels);
    benchmark::DoNotOptimize(histogram);
  });
}

void copy(benchmark::State& state, PixelDepth depth, Cache cache) {
  Frames frames(depth, Content::natural, cache);
  std::vector<std::byte> target(frames.next().bytes.size());
  for (auto _ : state) copyFrame(frames.next(), target);
}

// Four bare counts a pixel, in one table a channel; blue stands in for the luminance too.
void bareCounts(benchmark::State& state, Content content, Cache cache) {
  Frames frames(PixelDepth::bits8, content, cache);
  measure(state, frames, [&](const BenchPicture& picture) {
    const auto* pixels = reinterpret_cast<const std::uint8_t*>(picture.bytes.data());
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
void plainRule(benchmark::State& state, Content content, Cache cache) {
  Frames frames(PixelDepth::bits8, content, cache);
  LuminanceWeights weights;
  fillLuminanceWeights(weights);
  measure(state, frames, [&](const BenchPicture& picture) {
    const auto* pixels = reinterpret_cast<const std::uint8_t*>(picture.bytes.data());
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

template <class Run>
void add(const std::string& name, Run run) {
  benchmark::RegisterBenchmark(name.c_str(), run)->Unit(benchmark::kMicrosecond);
}

void addAll(Cache cache) {
  const std::string end = std::string("/") + cacheName(cache);
  const auto named = [&](const char* what, Content content) {
    return std::string(what) + nameOf(content) + end;
  };
  for (const auto depth : {PixelDepth::bits8, PixelDepth::bits16, PixelDepth::float32}) {
    const std::string middle = std::string("/") + nameOf(depth);
    add("floor/copy" + middle + end, [=](benchmark::State& state) { copy(state, depth, cache); });
    for (const auto content : {Content::natural, Content::flat}) {
      for (const std::int32_t step : {1, 5}) {
        add("walk" + middle + "/" + nameOf(content) + "/step" + std::to_string(step) + end,
            [=](benchmark::State& state) { walk(state, depth, content, cache, step); });
      }
    }
  }
  for (const auto content : {Content::natural, Content::flat}) {
    add(named("floor/bare_counts/", content),
        [=](benchmark::State& state) { bareCounts(state, content, cache); });
    add(named("floor/plain_rule/", content),
        [=](benchmark::State& state) { plainRule(state, content, cache); });
  }
}

const bool kRegistered = [] {
  for (const Cache cache : {Cache::hot, Cache::ring}) addAll(cache);
  std::vector<const WalkKernels*> lesser = {&kPlainWalk};
#if defined(__x86_64__)
  lesser.push_back(&kSse2Walk);
#endif
  for (const WalkKernels* kernels : lesser) {
    add(std::string("walk_by/") + kernels->name + "/8bit/natural/hot",
        [=](benchmark::State& state) { walkBy(state, *kernels); });
  }
  return true;
}();

}  // namespace
}  // namespace varilum::bench
