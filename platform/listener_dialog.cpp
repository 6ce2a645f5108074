// platform/listener_dialog.cpp — the worker dialog without a window: shown by the host, or in a
// line.
#include "platform/listener_dialog.h"

#include <cstdio>
#include <cstring>
#include <system_error>

#include "hostapi/commands.h"

namespace varilum {
namespace {

constexpr std::size_t kTitleLength = 255;

}  // namespace

ListenerDialog::ListenerDialog(const PF_InData& in, bool (*worker)(WorkerBlock&), void* context,
                               const char* title, bool allowCancel)
    : listener_(in, kVarilumProgressSuite, kVarilumProgressSuiteVersion1),
      title_(title, strnlen(title, kTitleLength)),
      allowCancel_(allowCancel) {
  block_.context = context;
  block_.worker = worker;
}

ListenerDialog::~ListenerDialog() {
  cleanUp();
}

std::int64_t ListenerDialog::doModal() noexcept {
  cleanUp();
  std::unique_lock lock(mutex_);
  status_.clear();
  position_ = 0;
  waiting_ = false;
  result_ = 0;
  block_.dialog.store(this);
  block_.running.store(1);
  try {
    thread_ = std::thread([this] { runWorker(); });
  } catch (const std::system_error&) {
    block_.running.store(0);
    return kWorkerNotStarted;
  }

  while (result_ == 0) {
    changed_.wait(lock, [this] { return waiting_ || result_ != 0; });
    if (!waiting_) continue;
    lock.unlock();
    const bool stop = show(status_, position_) == PF_Interrupt_CANCEL && allowCancel_;
    lock.lock();
    waiting_ = false;
    changed_.notify_all();
    if (stop && result_ == 0) terminate(lock);
  }
  const std::int64_t result = result_;
  lock.unlock();
  cleanUp();
  return result;
}

void ListenerDialog::runWorker() noexcept {
  std::int64_t result = kWorkerFailed;
  try {
    if (block_.stopRequested.load() == 0 && block_.worker(block_)) result = kWorkerSucceeded;
  } catch (...) {  // the worker's failure is its own to tell
    result = kWorkerFailed;
  }
  const std::lock_guard guard(mutex_);
  block_.running.store(0);
  if (block_.stopRequested.load() == 0) result_ = result;
  changed_.notify_all();
}

// The report is the dialog's now; the worker goes on when it has been shown.
void ListenerDialog::hand(std::unique_lock<std::mutex>& lock) {
  waiting_ = true;
  changed_.notify_all();
  changed_.wait(lock, [this] { return !waiting_ || block_.stopRequested.load() != 0; });
}

void ListenerDialog::takeStatus(const char* text) noexcept {
  std::unique_lock lock(mutex_);
  try {
    status_ = text;
  } catch (const std::bad_alloc&) {
    return;  // a line less
  }
  hand(lock);
}

void ListenerDialog::takePosition(std::int32_t position) noexcept {
  std::unique_lock lock(mutex_);
  position_ = position;
  hand(lock);
}

bool ListenerDialog::ended(std::unique_lock<std::mutex>& lock, std::chrono::milliseconds within) {
  return changed_.wait_for(lock, within, [this] { return block_.running.load() == 0; });
}

void ListenerDialog::terminate(std::unique_lock<std::mutex>& lock) {
  block_.stopRequested.store(1);
  changed_.notify_all();
  const auto tell = [&](const char* status) {
    lock.unlock();
    show(status, position_);
    lock.lock();
  };
  tell("Termination Initiated..");
  if (!ended(lock, timeout_)) {
    tell("Termination Complete ..Shutting Down !!");
    ended(lock, timeout_);
  }
  result_ = kWorkerCancelled;
}

void ListenerDialog::cleanUp() noexcept {
  block_.stopRequested.store(1);
  {
    const std::lock_guard guard(mutex_);
    changed_.notify_all();
  }
  if (thread_.joinable()) thread_.join();
  block_.running.store(0);
  block_.stopRequested.store(0);
  block_.dialog.store(nullptr);
}

std::int32_t ListenerDialog::show(const std::string& status, std::int32_t position) noexcept {
  if (listener_) return listener_->showProgress(title_.c_str(), status.c_str(), position);
  std::fprintf(stderr, "\r%s %3d%% %-60s", title_.c_str(), static_cast<int>(position),
               status.c_str());
  if (position == 100) std::fputc('\n', stderr);
  return 0;
}

}  // namespace varilum
