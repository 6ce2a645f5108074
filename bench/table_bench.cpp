// bench/table_bench.cpp — the builders of the correction table; floor: filling 256 entries.
#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>

#include "stats/correction_table.h"

namespace varilum::bench {
namespace {

double naturalLog(double value) {
  return std::log(value);
}

template <class Build>
void build(benchmark::State& state, bool clipping, Build builder) {
  const auto sequence = std::make_unique<SequenceState>(freshSequenceState());
  sequence->frameDesiredLuminance = 112.5;
  sequence->frameInputLuminance = 101.25;
  sequence->frameDesiredSpread = 33.0f;
  sequence->frameInputSpread = 30.0f;
  sequence->adjustClipping = clipping;
  for (auto _ : state) {
    builder(*sequence);
    benchmark::DoNotOptimize(sequence->correctionTable);
  }
}

void identity(benchmark::State& state) {
  build(state, false, [](SequenceState& sequence) { buildIdentityTable(sequence); });
}
void linear(benchmark::State& state) {
  build(state, state.range(0) != 0, [](SequenceState& sequence) { buildLinearTable(sequence); });
}
void shift(benchmark::State& state) {
  build(state, state.range(0) != 0, [](SequenceState& sequence) { buildShiftTable(sequence); });
}
void gamma(benchmark::State& state) {
  build(state, false, [](SequenceState& sequence) { buildGammaTable(sequence, naturalLog); });
}

BENCHMARK(identity)->Name("floor/table/identity");
BENCHMARK(linear)->Name("table/linear/clipping")->Arg(0)->Arg(1);
BENCHMARK(shift)->Name("table/shift/clipping")->Arg(0)->Arg(1);
BENCHMARK(gamma)->Name("table/gamma");

}  // namespace
}  // namespace varilum::bench
