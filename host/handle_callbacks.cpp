// host/handle_callbacks.cpp — handles as effects ask for them, refusals included.
#include "host/handle_callbacks.h"

#include "host/command.h"
#include "host/handles.h"
#include "host/host_state.h"
#include "hostapi/commands.h"

namespace host {

void** effectNewHandle(std::uint64_t bytes) {
  HostState* host = currentHost();
  if (host == nullptr || host->faults.check(CallKind::newHandle) != 0) return nullptr;
  return createHandle(*host, bytes);
}

void* effectLockHandle(void** handle) {
  HostState* host = currentHost();
  if (host != nullptr && host->faults.check(CallKind::lockHandle) != 0) return nullptr;
  if (handle == nullptr && host != nullptr) host->report("lock: no handle");
  void* const address = lockHandle(handle);
  if (Command* command = currentCommand(); command != nullptr && address != nullptr) {
    command->noteLock(handle, 1);
  }
  return address;
}

void effectUnlockHandle(void** handle) {
  if (handle == nullptr) {
    if (HostState* host = currentHost()) host->report("unlock: no handle");
    return;
  }
  if (Command* command = currentCommand()) command->noteLock(handle, -1);
  unlockHandle(handle);
}

void effectDisposeHandle(void** handle) {
  if (handle == nullptr) {
    if (HostState* host = currentHost()) host->report("dispose: no handle");
    return;
  }
  disposeHandle(handle);
}

std::uint64_t effectHandleSize(void** handle) {
  return handleSize(handle);
}

std::int32_t effectResizeHandle(std::uint64_t bytes, void*** handle) {
  HostState* host = currentHost();
  if (host != nullptr) {
    if (const std::int32_t error = host->faults.check(CallKind::resizeHandle)) return error;
  }
  if (handle == nullptr || !isLiveHandle(*handle)) {
    if (host != nullptr) host->report("resize: no live handle");
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  return resizeHandle(*handle, bytes) ? PF_Err_NONE : PF_Err_OUT_OF_MEMORY;
}

}  // namespace host
