// platform/cup_dialog.cpp — the worker dialog as a window. Windows only.
#include "platform/cup_dialog.h"

#include <cstring>

#include "platform/cup_dialog_template.h"

namespace varilum {
namespace {

constexpr DWORD kKilled = 2;  // exit code of a worker that was ended by force

}  // namespace

template <DWORD kClasses>
CInitCommonControls<kClasses>::CInitCommonControls() noexcept {
  static const BOOL once = [] {
    const INITCOMMONCONTROLSEX wanted{sizeof wanted, kClasses};
    return InitCommonControlsEx(&wanted);
  }();
  static_cast<void>(once);
}

CUPDialog::CUPDialog(HWND parent, bool (*worker)(WorkerBlock&), void* context, const char* title,
                     bool allowCancel) noexcept
    : parent_(parent), allowCancel_(allowCancel) {
  std::strncpy(title_, title, sizeof title_ - 1);
  block_.context = context;
  block_.worker = worker;
}

CUPDialog::~CUPDialog() {
  cleanup();
}

std::int64_t CUPDialog::doModal() noexcept {
  cleanup();
  const auto self = reinterpret_cast<LPARAM>(this);
  const INT_PTR result =
      templateName_ != nullptr
          ? DialogBoxParamA(instance_, templateName_, parent_, procedure, self)
          : DialogBoxIndirectParamA(instance_, progressTemplate(), parent_, procedure, self);
  cleanup();
  return result;
}

void CUPDialog::cleanup() noexcept {
  block_.stopRequested.store(1);
  if (thread_ != nullptr) {
    if (WaitForSingleObject(thread_, timeout_) != WAIT_OBJECT_0) {
      TerminateThread(thread_, kKilled);
      WaitForSingleObject(thread_, timeout_);
    }
    CloseHandle(thread_);
    thread_ = nullptr;
  }
  block_.running.store(0);
  block_.stopRequested.store(0);
  block_.window.store(nullptr);
  block_.dialog.store(nullptr);
}

INT_PTR CUPDialog::messageHook(HWND, UINT, WPARAM, LPARAM, bool) noexcept {
  return 0;
}

HANDLE CUPDialog::startThread(LPTHREAD_START_ROUTINE routine, void* block) noexcept {
  return CreateThread(nullptr, 0, routine, block, 0, nullptr);
}

INT_PTR CALLBACK CUPDialog::procedure(HWND window, UINT message, WPARAM first,
                                      LPARAM second) noexcept {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrA(window, GWLP_USERDATA, second);
    reinterpret_cast<CUPDialog*>(second)->begin(window);
    return TRUE;
  }
  auto* self = reinterpret_cast<CUPDialog*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  if (self == nullptr) return FALSE;
  const bool handled = self->handle(window, message, first, second);
  const INT_PTR answer = self->messageHook(window, message, first, second, handled);
  return handled ? TRUE : answer;
}

void CUPDialog::begin(HWND window) noexcept {
  if (!allowCancel_) SendMessageA(window, disableCancel, 0, 0);
  SetDlgItemTextA(window, statusLine, "");
  SendDlgItemMessageA(window, progressBar, PBM_SETPOS, 0, 0);
  SetWindowTextA(window, title_);
  block_.window.store(window);
  block_.dialog.store(this);
  messageHook(window, WM_INITDIALOG, 0, reinterpret_cast<LPARAM>(this), true);
  block_.running.store(1);
  thread_ = startThread(threadRoutine, static_cast<WorkerBlock*>(&block_));
  if (thread_ == nullptr) {
    block_.running.store(0);
    EndDialog(window, kWorkerNotStarted);
  }
}

DWORD WINAPI CUPDialog::threadRoutine(void* parameter) noexcept {
  Block& block = static_cast<Block&>(*static_cast<WorkerBlock*>(parameter));
  WPARAM result = kWorkerFailed;
  try {
    if (block.stopRequested.load() == 0 && block.worker(block)) result = kWorkerSucceeded;
  } catch (...) {  // the worker's failure is its own to tell
    result = kWorkerFailed;
  }
  // Once running is clear the dialog may be gone.
  const HWND window = block.window.load();
  const bool stopped = block.stopRequested.load() != 0;
  block.running.store(0);
  if (!stopped) PostMessageA(window, end, result, 0);
  return 0;
}

void CUPDialog::takeStatus(const char* text) noexcept {
  SendMessageA(block_.window.load(), setStatus, 0, reinterpret_cast<LPARAM>(text));
}

void CUPDialog::takePosition(std::int32_t position) noexcept {
  SendMessageA(block_.window.load(), setPosition, static_cast<WPARAM>(position), 0);
}

bool CUPDialog::handle(HWND window, UINT message, WPARAM first, LPARAM second) noexcept {
  const bool stopping = block_.stopRequested.load() != 0;
  switch (message) {
    case disableCancel:
    case enableCancel:
      allow(window, message == enableCancel);
      return true;
    case end:
      EndDialog(window, static_cast<INT_PTR>(first));
      return true;
    case setPosition:
      if (!stopping) SendDlgItemMessageA(window, progressBar, PBM_SETPOS, first, 0);
      return true;
    case setStatus:
      if (!stopping) SendDlgItemMessageA(window, statusLine, WM_SETTEXT, 0, second);
      return true;
    case cancel:
      if (!stopping) terminate(window);
      return true;
    case WM_COMMAND:
      if (LOWORD(first) != cancelButton) return false;
      SendMessageA(window, cancel, 0, 0);
      return true;
    case WM_SYSCOMMAND:
      if ((first & 0xFFF0) != SC_CLOSE) return false;  // the low bits are the system's
      SendMessageA(window, cancel, 0, 0);
      return true;
    default:
      return false;
  }
}

void CUPDialog::allow(HWND window, bool allowed) const noexcept {
  const UINT state = allowed ? MF_ENABLED : MF_DISABLED | MF_GRAYED;
  if (HMENU menu = GetSystemMenu(window, FALSE)) {
    EnableMenuItem(menu, SC_CLOSE, MF_BYCOMMAND | state);
  }
  if (HWND button = GetDlgItem(window, cancelButton)) EnableWindow(button, allowed ? TRUE : FALSE);
}

void CUPDialog::terminate(HWND window) noexcept {
  const auto tell = [&](const char* status) {
    SetDlgItemTextA(window, statusLine, status);
    UpdateWindow(window);
  };
  block_.stopRequested.store(1);
  tell("Termination Initiated..");
  SendMessageA(window, disableCancel, 0, 0);
  UpdateWindow(window);
  if (block_.running.load() != 0) {
    waitForWorker();
    if (block_.running.load() != 0) {
      tell("Termination Complete ..Shutting Down !!");
      waitForWorker();
    }
  }
  EndDialog(window, kWorkerCancelled);
}

// A worker in the middle of a report waits for this thread: its message is served meanwhile.
void CUPDialog::waitForWorker() noexcept {
  const ULONGLONG limit = GetTickCount64() + timeout_;
  for (ULONGLONG now = GetTickCount64(); now < limit; now = GetTickCount64()) {
    const DWORD woken = MsgWaitForMultipleObjects(1, &thread_, FALSE,
                                                  static_cast<DWORD>(limit - now), QS_SENDMESSAGE);
    if (woken == WAIT_OBJECT_0 || woken == WAIT_FAILED) return;
    MSG message;
    PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
  }
}

}  // namespace varilum
