// host/iterate_pool.cpp — the threads that iteration runs on.
#include "host/iterate_pool.h"

#include <algorithm>

#include "host/host_state.h"
#include "hostapi/commands.h"

namespace host {

struct IteratePool::Job {
  std::int32_t count = 0;
  std::int32_t piece = 1;
  void* context = nullptr;
  Work work = nullptr;
  std::atomic<std::int64_t> next{0};
  std::atomic<std::int32_t> result{0};
  std::int32_t helpers = 0;  // these two under the pool's mutex
  std::int32_t joined = 0;

  bool open() const noexcept { return next.load() < count && result.load() == 0; }
};

IteratePool::IteratePool(HostState& host, std::int32_t threads)
    : host_(host),
      threads_(threads > 0
                   ? threads
                   : std::max(1, static_cast<std::int32_t>(std::thread::hardware_concurrency()))) {}

IteratePool::~IteratePool() {
  {
    const std::lock_guard guard(mutex_);
    stopping_ = true;
  }
  wake_.notify_all();
  for (std::thread& thread : crew_) thread.join();
}

std::int32_t IteratePool::run(std::int32_t count, std::int32_t piece, void* context, Work work) {
  Job job;
  job.count = count;
  job.piece = std::max(piece, 1);
  job.context = context;
  job.work = work;
  const bool shared = threads_ > 1 && count > job.piece;
  if (shared) {
    const std::lock_guard guard(mutex_);
    if (crew_.empty()) start();
    jobs_.push_back(&job);
    wake_.notify_all();
  }
  help(job, 0);
  if (shared) {
    std::unique_lock lock(mutex_);
    std::erase(jobs_, &job);
    left_.wait(lock, [&] { return job.helpers == 0; });
  }
  return job.result.load();
}

void IteratePool::start() {
  crew_.reserve(static_cast<std::size_t>(threads_ - 1));
  for (std::int32_t i = 1; i < threads_; ++i) crew_.emplace_back([this] { serve(); });
}

void IteratePool::serve() {
  const HostScope scope(host_);
  std::unique_lock lock(mutex_);
  for (;;) {
    Job* job = nullptr;
    wake_.wait(lock, [&] {
      const auto found = std::find_if(jobs_.begin(), jobs_.end(), [](Job* j) { return j->open(); });
      job = found == jobs_.end() ? nullptr : *found;
      return stopping_ || job != nullptr;
    });
    if (job == nullptr) return;
    ++job->helpers;
    const std::int32_t worker = ++job->joined;
    lock.unlock();
    help(*job, worker);
    lock.lock();
    if (--job->helpers == 0) left_.notify_all();
  }
}

void IteratePool::help(Job& job, std::int32_t worker) noexcept {
  while (job.result.load(std::memory_order_relaxed) == 0) {
    const std::int64_t begin = job.next.fetch_add(job.piece);
    if (begin >= job.count) return;
    const auto end =
        static_cast<std::int32_t>(std::min<std::int64_t>(begin + job.piece, job.count));
    std::int32_t result = 0;
    try {
      result = job.work(job.context, static_cast<std::int32_t>(begin), end, worker);
    } catch (...) {
      host_.report("an exception left a function that iteration called");
      result = PF_Err_INTERNAL_STRUCT_DAMAGED;
    }
    if (result != 0) {
      std::int32_t none = 0;
      job.result.compare_exchange_strong(none, result);
      return;
    }
  }
}

}  // namespace host
