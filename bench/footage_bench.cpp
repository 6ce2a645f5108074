// bench/footage_bench.cpp — measuring a frame for shots and mattes, with a copy of it as the floor.
#include <benchmark/benchmark.h>

#include <cstring>
#include <random>
#include <vector>

#include "footage/frame_measure.h"

namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr std::size_t kBytes = std::size_t{4} * kWidth * kHeight;

enum Picture { noise, letterboxed, night };

std::vector<std::uint8_t> makePicture(Picture kind) {
  std::vector<std::uint8_t> bytes(kBytes, 0);
  std::mt19937 random(1);
  for (int y = 0; y < kHeight; ++y) {
    if (kind == letterboxed && (y < 140 || y >= kHeight - 140)) continue;
    for (int at = 0; at < 4 * kWidth; ++at) {
      const std::uint8_t byte = static_cast<std::uint8_t>(random() >> 24);
      bytes[static_cast<std::size_t>(y) * 4 * kWidth + static_cast<std::size_t>(at)] =
          kind == night ? byte >> 6 : byte;
    }
  }
  return bytes;
}

void measure(benchmark::State& state, Picture kind) {
  const std::vector<std::uint8_t> bytes = makePicture(kind);
  for (auto _ : state) {
    benchmark::DoNotOptimize(footage::measureFrame({bytes.data(), 4 * kWidth, kWidth, kHeight}));
  }
}

void copy(benchmark::State& state) {
  const std::vector<std::uint8_t> bytes = makePicture(noise);
  std::vector<std::uint8_t> target(kBytes);
  for (auto _ : state) {
    std::memcpy(target.data(), bytes.data(), kBytes);
    benchmark::ClobberMemory();
  }
}

BENCHMARK_CAPTURE(measure, noise, noise)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(measure, letterboxed, letterboxed)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(measure, night, night)->Unit(benchmark::kMillisecond);
BENCHMARK(copy)->Unit(benchmark::kMillisecond);

}  // namespace
