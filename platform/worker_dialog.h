// platform/worker_dialog.h — a modal progress dialog with a worker thread behind it.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

#include "hostapi/command_data.h"

namespace varilum {

class WorkerDialog;

// What the two threads share. The dialog sets stopRequested; the worker looks at it and returns.
struct WorkerBlock {
  std::atomic<WorkerDialog*> dialog{nullptr};  // null when there is nothing to report to
  void* context = nullptr;                     // the worker's own
  std::atomic<std::uint8_t> running{0};
  std::atomic<std::uint8_t> stopRequested{0};
  bool (*worker)(WorkerBlock&) = nullptr;  // true when it did its work
};

// [worker thread] Reports. They return once the dialog shows them, and do nothing when it is gone
// or has asked to stop. position: 0..100.
void sendStatus(WorkerBlock& block, const char* text) noexcept;
void sendPosition(WorkerBlock& block, std::int32_t position) noexcept;
void sendProgress(WorkerBlock& block, const char* text, std::int32_t position) noexcept;

// How a dialog ended.
inline constexpr std::int64_t kWorkerSucceeded = 1;
inline constexpr std::int64_t kWorkerFailed = 2;
inline constexpr std::int64_t kWorkerNotStarted = 3;
inline constexpr std::int64_t kWorkerCancelled = 0x10002;

class WorkerDialog {
 public:
  virtual ~WorkerDialog() = default;

  // Runs the worker, shows what it reports, and gives how that ended. Never throws.
  virtual std::int64_t doModal() noexcept = 0;

 private:
  friend void sendStatus(WorkerBlock&, const char*) noexcept;
  friend void sendPosition(WorkerBlock&, std::int32_t) noexcept;
  // [worker thread]
  virtual void takeStatus(const char* text) noexcept = 0;
  virtual void takePosition(std::int32_t position) noexcept = 0;
};

// The dialog for this host: its own progress display where it offers one, otherwise a window on
// Windows, and elsewhere (or with VARILUM_HEADLESS=1) a line on standard error. parent: the host's
// main window, or null. title: cut to 255 characters. Throws std::bad_alloc.
std::unique_ptr<WorkerDialog> makeWorkerDialog(const PF_InData& in, void* parent,
                                               bool (*worker)(WorkerBlock&), void* context,
                                               const char* title, bool allowCancel);

}  // namespace varilum
