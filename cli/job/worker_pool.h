// cli/job/worker_pool.h — a few threads that share out the rows of one frame's conversion.
#pragma once

#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace cli {

/// run() works in the calling thread and in `threads` - 1 others, or in the calling thread alone
/// while the others work for somebody else.
class WorkerPool {
 public:
  explicit WorkerPool(int threads);
  ~WorkerPool();
  WorkerPool(const WorkerPool&) = delete;
  WorkerPool& operator=(const WorkerPool&) = delete;

  /// job(0) ... job(jobs - 1), in any order, returning when all are done; rethrows the first
  /// failure. Any thread.
  void run(int jobs, const std::function<void(int)>& job);

 private:
  void help();
  void takeJobs(std::unique_lock<std::mutex>& lock);

  std::mutex callers_;
  std::mutex mutex_;
  std::condition_variable changed_;
  const std::function<void(int)>* job_ = nullptr;
  int next_ = 0;
  int jobs_ = 0;
  int unfinished_ = 0;
  bool stop_ = false;
  std::exception_ptr error_;
  std::vector<std::thread> threads_;
};

}  // namespace cli
