// bench/kernel_bench.cpp — the kernels over a full-HD frame, a call through a pointer for each
// pixel as a host's iteration makes it. Floor: a callback that only copies the pixel.
#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <string>

#include "bench/bench_picture.h"
#include "hostapi/world.h"
#include "stats/correction_table.h"
#include "stats/pixel_kernels.h"

namespace varilum::bench {
namespace {

template <class Pixel>
using Kernel = std::int32_t (*)(void*, std::int32_t, std::int32_t, Pixel*, Pixel*);

template <class Pixel>
constexpr PixelDepth kDepthOf = sizeof(Pixel) == 4   ? PixelDepth::bits8
                                : sizeof(Pixel) == 8 ? PixelDepth::bits16
                                                     : PixelDepth::float32;

template <class Pixel>
[[gnu::noinline]] std::int32_t copyPixel(void*, std::int32_t, std::int32_t, Pixel* in, Pixel* out) {
  *out = *in;
  return 0;
}

FrameCorrection correctionFor(std::uint8_t method, bool analyzed) {
  const auto state = std::make_unique<SequenceState>(freshSequenceState());
  state->correctionMethod = method;
  state->frameDesiredLuminance = 112.5;
  state->frameInputLuminance = 101.25;
  state->frameDesiredSpread = 33.0f;
  state->frameInputSpread = 30.0f;
  buildCorrectionTable(*state, false, [](double value) { return std::log(value); });
  FrameCorrection correction;
  correction.analyzed = analyzed;
  correction.method = method;
  for (int i = 0; i < kLevels; ++i) correction.table[i] = state->correctionTable[i];
  const std::int32_t height = kWidth / 8;
  const std::int32_t top = (kHeight - height) / 2;
  correction.banner = placeBanner({0, top, kWidth, top + height});
  prepareCorrection(correction,
                    {state->frameDesiredLuminance, state->frameInputLuminance,
                     state->frameDesiredSpread, state->frameInputSpread, state->gammaValue});
  return correction;
}

template <class Pixel>
void iterate(benchmark::State& state, Kernel<Pixel> kernel, FrameCorrection correction) {
  BenchPicture source = makePicture(kDepthOf<Pixel>, Content::natural);
  BenchPicture target = source;
  auto* const in = reinterpret_cast<Pixel*>(source.bytes.data());
  auto* const out = reinterpret_cast<Pixel*>(target.bytes.data());
  for (auto _ : state) {
    std::size_t i = 0;
    for (std::int32_t y = 0; y < kHeight; ++y) {
      for (std::int32_t x = 0; x < kWidth; ++x, ++i) {
        if (kernel(&correction, x, y, in + i, out + i) != 0) state.SkipWithError("kernel failed");
      }
    }
    benchmark::ClobberMemory();
  }
  state.counters["ns_per_pixel"] =
      benchmark::Counter(double{kWidth} * kHeight * static_cast<double>(state.iterations()) * 1e-9,
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

// Through a volatile, so that the compiler cannot see which function is called.
template <class Pixel>
void throughPointer(benchmark::State& state, Kernel<Pixel> kernel,
                    const FrameCorrection& correction) {
  Kernel<Pixel> volatile held = kernel;
  iterate<Pixel>(state, held, correction);
}

template <class Pixel, class Choose>
void registerDepth(const std::string& depth, Choose choose) {
  const auto add = [&](const std::string& name, std::uint8_t method, bool analyzed, auto kernelOf) {
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
      const FrameCorrection correction = correctionFor(method, analyzed);
      throughPointer<Pixel>(state, kernelOf(correction), correction);
    })->Unit(benchmark::kMicrosecond);
  };
  add("floor/copy_pixel/" + depth, 1, true,
      [](const FrameCorrection&) { return copyPixel<Pixel>; });
  const struct {
    std::uint8_t method;
    const char* name;
  } methods[] = {{1, "linear"}, {2, "shift"}, {3, "gamma"}};
  for (const auto& [method, name] : methods)
    add("kernel/" + depth + "/" + name, method, true, choose);
  add("kernel/" + depth + "/banner", 1, false, choose);
}

const bool kRegistered = [] {
  registerDepth<PF_Pixel>("8bit", pixelKernel8);
  registerDepth<PF_Pixel16>("16bit", pixelKernel16);
  registerDepth<PF_PixelFloat>("float", pixelKernelFloat);
  registerDepth<PF_Pixel16>("16bit_plain", plainPixelKernel16);
  registerDepth<PF_PixelFloat>("float_plain", plainPixelKernelFloat);
  return true;
}();

}  // namespace
}  // namespace varilum::bench
