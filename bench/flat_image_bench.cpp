// bench/flat_image_bench.cpp — a saved image of 100 000 frames: writing, checking, restoring;
// floor: one copy of the whole image.
#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <vector>

#include "stats/flat_image.h"

namespace varilum::bench {
namespace {

constexpr std::size_t kFrames = 100000;

// What a live instance holds, in memory of our own.
struct LiveArrays {
  LiveArrays()
      : state(std::make_unique<SequenceState>(freshSequenceState())),
        levels(4, std::vector<double>(kFrames, 100.0)),
        stats(kFrames),
        histograms(kHistogramSlots) {
    state->frameCount = kFrames;
    state->levelArrayBytes = kFrames * sizeof(double);
    state->frameStatsBytes = kFrames * sizeof(FrameStats);
    state->histogramCacheBytes = kHistogramCacheSize;
    state->headerSize = kHeaderSize;
    state->flattened = 1;
  }
  std::unique_ptr<SequenceState> state;
  std::vector<std::vector<double>> levels;
  std::vector<FrameStats> stats;
  std::vector<FrameHistogram> histograms;
};

void write(const LiveArrays& live, std::vector<std::byte>& image) {
  std::byte* to = image.data();
  const auto append = [&to](const void* from, std::size_t size) {
    std::memcpy(to, from, size);
    to += size;
  };
  append(live.state.get(), kHeaderSize);
  for (const auto& array : live.levels) append(array.data(), array.size() * sizeof(double));
  append(live.stats.data(), live.stats.size() * sizeof(FrameStats));
  append(live.histograms.data(), live.histograms.size() * sizeof(FrameHistogram));
}

void writeImage(benchmark::State& state) {
  const LiveArrays live;
  std::vector<std::byte> image(flatImageSize(*live.state));
  for (auto _ : state) {
    write(live, image);
    benchmark::ClobberMemory();
  }
}

void checkImage(benchmark::State& state) {
  const LiveArrays live;
  std::vector<std::byte> image(flatImageSize(*live.state));
  write(live, image);
  for (auto _ : state) {
    const auto read = readFlatImage(image);
    if (!read) state.SkipWithError("image refused");
    benchmark::DoNotOptimize(read);
  }
}

void restoreImage(benchmark::State& state) {
  const LiveArrays live;
  std::vector<std::byte> image(flatImageSize(*live.state));
  write(live, image);
  LiveArrays target;
  for (auto _ : state) {
    const auto read = readFlatImage(image);
    if (!read) {
      state.SkipWithError("image refused");
      break;
    }
    *target.state = read->header;
    restoreInputLevels(read->inputLuminance, target.levels[0]);
    restoreInputLevels(read->inputSpread, target.levels[1]);
    restoreDesiredLevels(read->desiredLuminance, target.levels[2]);
    restoreDesiredLevels(read->desiredSpread, target.levels[3]);
    std::memcpy(target.stats.data(), read->frameStats.data(), read->frameStats.size());
    std::memcpy(target.histograms.data(), read->histograms.data(), read->histograms.size());
    benchmark::ClobberMemory();
  }
}

void copyImage(benchmark::State& state) {
  const LiveArrays live;
  std::vector<std::byte> image(flatImageSize(*live.state), std::byte{1});
  std::vector<std::byte> target(image.size());
  for (auto _ : state) {
    std::memcpy(target.data(), image.data(), image.size());
    benchmark::DoNotOptimize(target.data());
    benchmark::ClobberMemory();
  }
}

BENCHMARK(copyImage)->Name("floor/copy_image/100000")->Unit(benchmark::kMicrosecond);
BENCHMARK(writeImage)->Name("image/write/100000")->Unit(benchmark::kMicrosecond);
BENCHMARK(checkImage)->Name("image/check/100000")->Unit(benchmark::kMicrosecond);
BENCHMARK(restoreImage)->Name("image/restore/100000")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace varilum::bench
