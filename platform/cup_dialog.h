// platform/cup_dialog.h — the worker dialog as a window. Windows only.
#pragma once

#include <windows.h>

// commctrl.h needs windows.h first.
#include <commctrl.h>

#include "platform/worker_dialog.h"

namespace varilum {

// Registers the common controls' classes of the mask once a process.
template <DWORD kClasses>
class CInitCommonControls {
 protected:
  CInitCommonControls() noexcept;
};

// A status line, a bar and a Cancel button over a worker thread. When cancelled it asks the worker
// to stop, waits a bounded time, and ends a worker that does not listen: such a worker's locks and
// check-outs are lost.
class CUPDialog : private CInitCommonControls<ICC_PROGRESS_CLASS>, public WorkerDialog {
 public:
  // Private messages of the dialog window.
  enum Message : UINT {
    disableCancel = WM_USER + 1234,
    enableCancel = WM_USER + 1235,
    end = WM_USER + 1236,          // wParam: result
    setPosition = WM_USER + 1237,  // wParam: 0..100
    setStatus = WM_USER + 1238,    // lParam: const char*
    cancel = WM_USER + 1239,
  };
  enum Control : int { cancelButton = 2, progressBar = 1018, statusLine = 1026 };

  CUPDialog(HWND parent, bool (*worker)(WorkerBlock&), void* context, const char* title,
            bool allowCancel) noexcept;
  ~CUPDialog() override;
  CUPDialog(const CUPDialog&) = delete;
  CUPDialog& operator=(const CUPDialog&) = delete;

  // Destructors of derived classes call cleanup themselves while a worker may run.
  std::int64_t doModal() noexcept override;
  // Stops a worker that runs: by asking, then by force.
  void cleanup() noexcept;

 protected:
  // After each message of the dialog; what it gives is the answer to those not handled.
  virtual INT_PTR messageHook(HWND window, UINT message, WPARAM first, LPARAM second,
                              bool handled) noexcept;
  // Null when there is no thread to be had.
  virtual HANDLE startThread(LPTHREAD_START_ROUTINE routine, void* block) noexcept;

  // From a resource of instance, when there is a name.
  HINSTANCE instance_ = nullptr;
  const char* templateName_ = nullptr;

 private:
  struct Block : WorkerBlock {
    std::atomic<HWND> window{nullptr};
  };

  static INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM first,
                                    LPARAM second) noexcept;
  static DWORD WINAPI threadRoutine(void* block) noexcept;

  void takeStatus(const char* text) noexcept override;
  void takePosition(std::int32_t position) noexcept override;
  void begin(HWND window) noexcept;
  bool handle(HWND window, UINT message, WPARAM first, LPARAM second) noexcept;
  void allow(HWND window, bool allowed) const noexcept;
  void terminate(HWND window) noexcept;
  void waitForWorker() noexcept;

  HWND parent_;
  DWORD timeout_ = 500;  // milliseconds
  bool allowCancel_;
  HANDLE thread_ = nullptr;
  char title_[256] = {};
  Block block_;
};

}  // namespace varilum
