// cli/job/worker_pool.cpp — a few threads that share out the rows of one frame's conversion.
#include "cli/job/worker_pool.h"

#include <utility>

namespace cli {

WorkerPool::WorkerPool(int threads) {
  for (int i = 1; i < threads; ++i) threads_.emplace_back([this] { help(); });
}

WorkerPool::~WorkerPool() {
  {
    const std::lock_guard lock(mutex_);
    stop_ = true;
  }
  changed_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

void WorkerPool::run(int jobs, const std::function<void(int)>& job) {
  const std::unique_lock first(callers_, std::try_to_lock);
  if (!first) {
    for (int i = 0; i < jobs; ++i) job(i);
    return;
  }
  std::unique_lock lock(mutex_);
  job_ = &job;
  next_ = 0;
  jobs_ = jobs;
  unfinished_ = jobs;
  error_ = nullptr;
  changed_.notify_all();
  takeJobs(lock);
  changed_.wait(lock, [this] { return unfinished_ == 0; });
  job_ = nullptr;
  if (error_) std::rethrow_exception(std::exchange(error_, nullptr));
}

void WorkerPool::help() {
  std::unique_lock lock(mutex_);
  while (!stop_) {
    takeJobs(lock);
    changed_.wait(lock, [this] { return stop_ || next_ < jobs_; });
  }
}

void WorkerPool::takeJobs(std::unique_lock<std::mutex>& lock) {
  while (next_ < jobs_) {
    const int mine = next_++;
    const std::function<void(int)>& job = *job_;
    lock.unlock();
    std::exception_ptr error;
    try {
      job(mine);
    } catch (...) {
      error = std::current_exception();
    }
    lock.lock();
    if (error && !error_) error_ = error;
    if (--unfinished_ == 0) changed_.notify_all();
  }
}

}  // namespace cli
