// platform/listener_dialog.h — the worker dialog without a window: shown by the host, or in a line.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include "access/suite.h"
#include "hostapi/suites/varilum_progress.h"
#include "platform/worker_dialog.h"

namespace varilum {

// Speaks the same protocol as the window: reports are taken one by one on the thread that runs the
// dialog, a wish to stop is passed on to the worker, and the wait for it is bounded. A thread
// cannot be ended from outside without the process's locks and memory suffering, so what is bounded
// is the time until the dialog says that it shuts down; its end waits for the worker's.
class ListenerDialog : public WorkerDialog {
 public:
  ListenerDialog(const PF_InData& in, bool (*worker)(WorkerBlock&), void* context,
                 const char* title, bool allowCancel);
  ~ListenerDialog() override;

  bool hasListener() const noexcept { return static_cast<bool>(listener_); }
  std::int64_t doModal() noexcept override;

 private:
  void takeStatus(const char* text) noexcept override;
  void takePosition(std::int32_t position) noexcept override;

  void runWorker() noexcept;
  void hand(std::unique_lock<std::mutex>& lock);
  void terminate(std::unique_lock<std::mutex>& lock);
  void cleanUp() noexcept;
  bool ended(std::unique_lock<std::mutex>& lock, std::chrono::milliseconds within);
  std::int32_t show(const std::string& status, std::int32_t position) noexcept;

  const OptionalSuite<Varilum_ProgressSuite1> listener_;
  const std::string title_;
  const bool allowCancel_;
  std::chrono::milliseconds timeout_{500};
  WorkerBlock block_;
  std::thread thread_;

  std::mutex mutex_;
  std::condition_variable changed_;
  std::string status_;
  std::int32_t position_ = 0;
  bool waiting_ = false;  // a report that the dialog has not shown yet
  std::int64_t result_ = 0;
};

}  // namespace varilum
