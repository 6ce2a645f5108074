// tests/host/iterate_pool_test.cpp — every piece once, first error wins, several callers at once.
#include "host/iterate_pool.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "host/host_state.h"
#include "tests/host/recording_listener.h"

namespace {

host::HostOptions withThreads(std::int32_t threads) {
  host::HostOptions options;
  options.threads = threads;
  return options;
}

struct Tally {
  explicit Tally(std::size_t count) : visits(new std::atomic<int>[count]()), size(count) {}
  std::unique_ptr<std::atomic<int>[]> visits;
  std::size_t size;
  std::atomic<std::int32_t> highestWorker{0};

  static std::int32_t visit(void* self, std::int32_t begin, std::int32_t end, std::int32_t worker) {
    auto& tally = *static_cast<Tally*>(self);
    for (std::int32_t i = begin; i < end; ++i) tally.visits[static_cast<std::size_t>(i)]++;
    std::int32_t seen = tally.highestWorker.load();
    while (seen < worker && !tally.highestWorker.compare_exchange_weak(seen, worker)) {
    }
    return 0;
  }
};

TEST(IteratePool, visitsEveryItemOnceWithAnyNumberOfThreads) {
  for (const std::int32_t threads : {1, 2, 7, 64}) {
    host::Host ae(host::Role::afterEffects, {}, withThreads(threads));
    for (const std::int32_t count : {0, 1, 5, 1000}) {
      for (const std::int32_t piece : {1, 3, 2000}) {
        Tally tally(static_cast<std::size_t>(count));
        EXPECT_EQ(ae.state().pool.run(count, piece, &tally, Tally::visit), 0);
        for (std::size_t i = 0; i < tally.size; ++i) ASSERT_EQ(tally.visits[i].load(), 1);
        EXPECT_LT(tally.highestWorker.load(), threads);
      }
    }
  }
}

TEST(IteratePool, anErrorStopsTheRunAndIsReturned) {
  host::Host ae(host::Role::afterEffects, {}, withThreads(4));
  std::atomic<int> pieces{0};
  const std::int32_t result = ae.state().pool.run(
      1000000, 1, &pieces, [](void* counter, std::int32_t begin, std::int32_t, std::int32_t) {
        ++*static_cast<std::atomic<int>*>(counter);
        return begin == 10 ? 517 : 0;
      });
  EXPECT_EQ(result, 517);
  EXPECT_LT(pieces.load(), 1000000);
}

TEST(IteratePool, anExceptionIsReportedAsDamage) {
  host::Host ae(host::Role::afterEffects, {}, withThreads(2));
  RecordingListener listener;
  ae.setListener(&listener);
  const std::int32_t result = ae.state().pool.run(
      8, 1, nullptr, [](void*, std::int32_t begin, std::int32_t, std::int32_t) -> std::int32_t {
        if (begin == 3) throw std::runtime_error("pixel");
        return 0;
      });
  EXPECT_EQ(result, 512);
  EXPECT_NE(listener.complaints(), "");
}

TEST(IteratePool, callersOnSeveralThreadsShareIt) {
  host::Host ae(host::Role::afterEffects, {}, withThreads(3));
  std::vector<std::thread> callers;
  for (int t = 0; t < 4; ++t) {
    callers.emplace_back([&] {
      for (int round = 0; round < 200; ++round) {
        Tally tally(97);
        EXPECT_EQ(ae.state().pool.run(97, 4, &tally, Tally::visit), 0);
        for (std::size_t i = 0; i < tally.size; ++i) ASSERT_EQ(tally.visits[i].load(), 1);
      }
    });
  }
  for (std::thread& caller : callers) caller.join();
}

}  // namespace
