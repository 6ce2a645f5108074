// tests/cli/job/worker_pool_test.cpp — every job once, on any number of threads.
#include "cli/job/worker_pool.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>

namespace cli {
namespace {

TEST(WorkerPool, RunsEveryJobOnce) {
  for (const int threads : {1, 2, 5}) {
    WorkerPool pool(threads);
    for (int round = 0; round < 200; ++round) {
      std::vector<std::atomic<int>> runs(static_cast<std::size_t>(round % 17));
      pool.run(round % 17, [&](int job) { ++runs[static_cast<std::size_t>(job)]; });
      for (const auto& count : runs) ASSERT_EQ(count.load(), 1);
    }
  }
}

TEST(WorkerPool, PassesAFailureOnAndGoesOn) {
  WorkerPool pool(3);
  EXPECT_THROW(pool.run(8,
                        [](int job) {
                          if (job == 5) throw std::runtime_error("five");
                        }),
               std::runtime_error);
  std::atomic<int> runs = 0;
  pool.run(8, [&](int) { ++runs; });
  EXPECT_EQ(runs.load(), 8);
}

}  // namespace
}  // namespace cli
