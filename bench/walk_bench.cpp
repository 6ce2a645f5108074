// bench/walk_bench.cpp — the walk over a full-HD frame against its floors, run by turns with them:
// a memory copy of the frame, and for wide steps a bare reading of the same pixels. Counter
// `ratio`: time in floors.
//
// hot: the same frame again and again, which a large cache holds; ring: each time another of
// several frames that no cache holds together, as when a clip is analysed. Copies always go to one
// frame.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#if defined(VARILUM_WITH_OPENCV)
#include <opencv2/imgproc.hpp>
#endif

#include "bench/against_floor.h"
#include "bench/bench_picture.h"
#include "stats/compute_frame_stats.h"
#include "stats/luminance.h"
#include "stats/pixel_walk.h"

namespace varilum::bench {
namespace {

enum class Cache { hot, ring };

const char* cacheName(Cache cache) {
  return cache == Cache::hot ? "hot" : "ring";
}

// Copies of one picture, taken in turns.
class Frames {
 public:
  Frames(PixelDepth depth, Content content, Cache cache) {
    const BenchPicture picture = makePicture(depth, content);
    const std::size_t count = cache == Cache::hot ? 1 : ringBytes() / picture.bytes.size() + 1;
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
  // Half as much again as the largest cache holds.
  static std::size_t ringBytes() {
    const long cache = sysconf(_SC_LEVEL3_CACHE_SIZE);
    const std::size_t bytes = cache > 0 ? static_cast<std::size_t>(cache) / 2 * 3 : 0;
    return std::clamp(bytes, std::size_t{128} << 20, std::size_t{768} << 20);
  }

  std::vector<BenchPicture> frames_;
  std::size_t at_ = 0;
};

void copyFrame(const BenchPicture& picture, std::vector<std::byte>& target) {
  std::memcpy(target.data(), picture.bytes.data(), target.size());
  benchmark::DoNotOptimize(target.data());
  benchmark::ClobberMemory();
}

template <class Body>
void measure(benchmark::State& state, Frames& frames, Body body) {
  std::vector<std::byte> target(frames.next().bytes.size());
  againstFloor(
      state, [&] { copyFrame(frames.next(), target); }, [&] { body(frames.next()); });
}

void walkFrame(const BenchPicture& picture, std::int32_t step) {
  FrameStats stats;
  FrameHistogram histogram;
  resetFrameStats(stats);
  Rect rect{0, 0, kWidth, kHeight};
  computeFrameStats(stats, histogram, picture.pixels, rect, 0, false, step);
  benchmark::DoNotOptimize(stats);
  benchmark::DoNotOptimize(histogram);
}

void walk(benchmark::State& state, PixelDepth depth, Content content, Cache cache,
          std::int32_t step) {
  Frames frames(depth, content, cache);
  measure(state, frames, [step](const BenchPicture& picture) { walkFrame(picture, step); });
}

// One number of each sampled pixel: the memory lines that a walk cannot do without.
void readSamples(const BenchPicture& picture, std::int32_t step) {
  const auto pixel = static_cast<std::size_t>(pixelBytes(picture.pixels.depth));
  const auto stride = static_cast<std::size_t>(step) * pixel;
  std::uint32_t all = 0;
  for (std::int32_t y = 0; y < kHeight; y += step) {
    const std::byte* row = picture.bytes.data() + y * picture.pixels.rowBytes;
    for (std::size_t at = 0; at < kWidth * pixel; at += stride) {
      std::uint32_t number;
      std::memcpy(&number, row + at, sizeof number);
      all ^= number;
    }
  }
  benchmark::DoNotOptimize(all);
}

void walkApart(benchmark::State& state, PixelDepth depth, std::int32_t step) {
  Frames frames(depth, Content::natural, Cache::ring);
  againstFloor(
      state, [&] { readSamples(frames.next(), step); }, [&] { walkFrame(frames.next(), step); });
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

#if defined(VARILUM_WITH_OPENCV)
// Four histograms of 256 levels by the library that most programs would take: red, green and blue
// of the interleaved frame, and blue once more in place of a luminance that it would first have to
// make. Counter `times_as_fast`: how much faster the walk is.
void walkAgainstOpenCv(benchmark::State& state, Content content) {
  Frames frames(PixelDepth::bits8, content, Cache::ring);
  cv::setNumThreads(1);
  const auto four = [&] {
    const BenchPicture& picture = frames.next();
    const cv::Mat image(kHeight, kWidth, CV_8UC4, const_cast<std::byte*>(picture.bytes.data()));
    const int size = kLevels;
    const float range[] = {0.0f, 256.0f};
    const float* ranges = range;
    for (const int channel : {1, 2, 3, 3}) {
      cv::Mat histogram;
      cv::calcHist(&image, 1, &channel, cv::noArray(), histogram, 1, &size, &ranges);
      benchmark::DoNotOptimize(histogram.data);
    }
  };
  againstFloor(state, four, [&] { walkFrame(frames.next(), 1); });
  state.counters["times_as_fast"] = 1.0 / state.counters["ratio"];
}
#endif

template <class Run>
void add(const std::string& name, Run run) {
  benchmark::RegisterBenchmark(name.c_str(), run)->Unit(benchmark::kMicrosecond)->UseManualTime();
}

void addAll(Cache cache) {
  const std::string end = std::string("/") + cacheName(cache);
  const auto named = [&](const char* what, Content content) {
    return std::string(what) + nameOf(content) + end;
  };
  for (const auto depth : {PixelDepth::bits8, PixelDepth::bits16, PixelDepth::float32}) {
    const std::string middle = std::string("/") + nameOf(depth);
    for (const auto content : {Content::natural, Content::flat}) {
      add("walk" + middle + "/" + nameOf(content) + end,
          [=](benchmark::State& state) { walk(state, depth, content, cache, 1); });
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
  for (const auto depth : {PixelDepth::bits8, PixelDepth::bits16, PixelDepth::float32}) {
    for (const std::int32_t step : {2, 3, 5, 10, 18}) {
      add(std::string("walk_apart/") + nameOf(depth) + "/step" + std::to_string(step),
          [=](benchmark::State& state) { walkApart(state, depth, step); });
    }
  }
#if defined(VARILUM_WITH_OPENCV)
  for (const auto content : {Content::natural, Content::flat}) {
    add(std::string("walk_against_opencv/8bit/") + nameOf(content),
        [=](benchmark::State& state) { walkAgainstOpenCv(state, content); });
  }
#endif
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
