// host/progress_dialog.cpp — the application's progress dialog, shown to the listener.
#include "host/progress_dialog.h"

#include <map>
#include <mutex>

#include "host/command.h"
#include "host/effect_state.h"

namespace host {
namespace {

struct Dialog {
  HostState* host = nullptr;
  bool stopped = false;
};

struct Dialogs {
  std::mutex mutex;
  std::map<PF_AppProgressDialogP, Dialog> open;
  std::uintptr_t last = 0xD1A0000;
};

Dialogs& dialogs() {
  static Dialogs* const instance = new Dialogs;
  return *instance;
}

// The listener's answer; what it throws is kept for the command, and stops the work.
bool askListener(HostState& host, std::int32_t count, std::int32_t total) {
  Listener* listener = host.listener.load();
  if (listener == nullptr) return true;
  try {
    return listener->progress(count, total);
  } catch (...) {
    if (Command* command = currentCommand()) command->keepFailure();
    return false;
  }
}

}  // namespace

std::int32_t createProgressDialog(const std::uint16_t*, const std::uint16_t*, char,
                                  PF_AppProgressDialogP* dialog) {
  HostState* host = currentHost();
  if (host == nullptr || dialog == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  if (const std::int32_t error = host->faults.check(CallKind::progress)) return error;
  Dialogs& all = dialogs();
  try {
    const std::lock_guard guard(all.mutex);
    *dialog = reinterpret_cast<PF_AppProgressDialogP>(all.last += 16);
    all.open.emplace(*dialog, Dialog{host, false});
  } catch (const std::bad_alloc&) {
    return PF_Err_OUT_OF_MEMORY;
  }
  host->accounts.progressDialogs.fetch_add(1);
  return PF_Err_NONE;
}

std::int32_t updateProgressDialog(PF_AppProgressDialogP dialog, std::int32_t count,
                                  std::int32_t total) {
  HostState* host = currentHost();
  if (host == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  Dialogs& all = dialogs();
  {
    const std::lock_guard guard(all.mutex);
    const auto found = all.open.find(dialog);
    if (found == all.open.end()) {
      host->report("progress dialog: not open");
      return PF_Err_BAD_CALLBACK_PARAM;
    }
    if (found->second.stopped) return PF_Interrupt_CANCEL;
  }
  if (const std::int32_t error = host->faults.check(CallKind::progress)) return error;
  if (askListener(*host, count, total)) return PF_Err_NONE;
  if (Command* command = currentCommand()) command->cancelled.store(true);
  const std::lock_guard guard(all.mutex);
  const auto found = all.open.find(dialog);
  if (found != all.open.end()) found->second.stopped = true;
  return PF_Interrupt_CANCEL;
}

std::int32_t disposeProgressDialog(PF_AppProgressDialogP dialog) {
  Dialogs& all = dialogs();
  HostState* host = nullptr;
  {
    const std::lock_guard guard(all.mutex);
    const auto found = all.open.find(dialog);
    if (found != all.open.end()) {
      host = found->second.host;
      all.open.erase(found);
    }
  }
  if (host == nullptr) {
    if (HostState* current = currentHost()) current->report("progress dialog: not open");
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  host->accounts.progressDialogs.fetch_sub(1);
  return PF_Err_NONE;
}

std::int32_t showEffectProgress(const char* title, const char* status, std::int32_t position) {
  constexpr std::int32_t kWhole = 100;
  HostState* host = currentHost();
  if (host == nullptr || title == nullptr || status == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  Command* command = currentCommand();
  try {
    if (Listener* listener = host->listener.load()) listener->status(title, status);
  } catch (...) {
    if (command != nullptr) command->keepFailure();
    return PF_Interrupt_CANCEL;
  }
  if (askListener(*host, position, kWhole)) return PF_Err_NONE;
  if (command != nullptr) command->cancelled.store(true);
  return PF_Interrupt_CANCEL;
}

}  // namespace host
