// host/iterate_pool.h — the threads that iteration runs on.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <thread>
#include <vector>

namespace host {

class HostState;

// Shares 0..count - 1 out in pieces, by an atomic counter, to the calling thread (worker 0) and to
// the pool's own. Several callers at once share the threads. Threads start at the first use.
class IteratePool {
 public:
  // context; begin; end (exclusive); worker. A non-zero result stops the run.
  using Work = std::int32_t (*)(void*, std::int32_t, std::int32_t, std::int32_t);

  // threads: the caller included; 0 = one a core.
  IteratePool(HostState& host, std::int32_t threads);
  ~IteratePool();
  IteratePool(const IteratePool&) = delete;
  IteratePool& operator=(const IteratePool&) = delete;

  std::int32_t threads() const noexcept { return threads_; }

  // The first non-zero result of work, or 0. What work throws is reported and counts as 512.
  std::int32_t run(std::int32_t count, std::int32_t piece, void* context, Work work);

 private:
  struct Job;
  void start();
  void serve();
  void help(Job& job, std::int32_t worker) noexcept;

  HostState& host_;
  std::int32_t threads_;
  std::mutex mutex_;
  std::condition_variable wake_;
  std::condition_variable left_;
  std::vector<Job*> jobs_;
  std::vector<std::thread> crew_;
  bool stopping_ = false;
};

}  // namespace host
