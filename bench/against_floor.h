// bench/against_floor.h — measuring something and its floor by turns.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <limits>

namespace varilum::bench {

// Processor time of the calling thread: what other programs take does not count.
inline double threadSeconds() {
  std::timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

template <class Work>
double secondsOf(Work& work) {
  const double start = threadSeconds();
  work();
  return threadSeconds() - start;
}

// Runs floor and body once each in every iteration, so that a busy machine slows both; only body is
// the benchmark's time, which needs UseManualTime(). Counters: `ratio` of the shortest times, and
// both of them in microseconds. Work on the calling thread only.
template <class Floor, class Body>
void againstFloor(benchmark::State& state, Floor floor, Body body) {
  double leastFloor = std::numeric_limits<double>::max();
  double leastBody = leastFloor;
  for (auto _ : state) {
    leastFloor = std::min(leastFloor, secondsOf(floor));
    const double seconds = secondsOf(body);
    leastBody = std::min(leastBody, seconds);
    state.SetIterationTime(seconds);
  }
  state.counters["ratio"] = leastBody / leastFloor;
  state.counters["least_us"] = leastBody * 1e6;
  state.counters["floor_us"] = leastFloor * 1e6;
}

}  // namespace varilum::bench
