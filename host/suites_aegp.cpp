// host/suites_aegp.cpp — the application's general suites: registration, scripts, memory.
#include <cstring>
#include <string_view>

#include "host/aegp_memory.h"
#include "host/aegp_result.h"
#include "host/command.h"
#include "host/effect_state.h"
#include "host/suite_tables.h"
#include "host/unused_slot.h"
#include "hostapi/suites/aegp_memory.h"
#include "hostapi/suites/aegp_utility.h"

namespace host {
namespace {

constexpr std::string_view kVersionScript = "app.version;";
constexpr std::size_t kMaxPluginName = 31;

std::int32_t registerPlugin(AEGP_GlobalRefcon, const char* name, std::int32_t* id) {
  HostState* host = currentHost();
  if (host == nullptr || name == nullptr || id == nullptr) return kAegpErrorParameter;
  if (const std::int32_t error = host->faults.check(CallKind::registerAegp)) return error;
  const Command* command = currentCommand();
  if (command == nullptr || command->command != PF_Cmd_GLOBAL_SETUP) {
    host->report("AEGP_RegisterWithAEGP: only in GLOBAL_SETUP");
    return kAegpErrorGeneric;
  }
  if (std::strlen(name) > kMaxPluginName) return kAegpErrorParameter;
  *id = host->pluginIds.fetch_add(1) + 1;
  return PF_Err_NONE;
}

std::int32_t executeScript(std::int32_t, const char* script, std::uint8_t, AEGP_MemHandle* result,
                           AEGP_MemHandle* error) {
  HostState* host = currentHost();
  if (host == nullptr || script == nullptr) return kAegpErrorParameter;
  if (result != nullptr) *result = nullptr;
  if (error != nullptr) *error = nullptr;
  if (const std::int32_t refused = host->faults.check(CallKind::script)) return refusal(refused);
  if (script == kVersionScript) {
    return result == nullptr ? PF_Err_NONE
                             : createAegpText(*host, host->options.appVersion, result);
  }
  if (error != nullptr) {
    const std::int32_t made = createAegpText(*host, "This host runs no such script.", error);
    if (made != 0) return made;
  }
  return kAegpErrorGeneric;
}

std::int32_t newMemory(std::int32_t, const char*, std::uint32_t bytes, std::int32_t flags,
                       AEGP_MemHandle* handle) {
  HostState* host = currentHost();
  if (host == nullptr) return kAegpErrorGeneric;
  return createAegpMemory(*host, bytes, (flags & AEGP_MemFlag_CLEAR) != 0, handle);
}

std::int32_t lockMemory(AEGP_MemHandle handle, void** address) {
  return address == nullptr ? kAegpErrorParameter : lockAegpMemory(handle, address);
}

std::int32_t memorySize(AEGP_MemHandle handle, std::uint32_t* bytes) {
  return bytes == nullptr ? kAegpErrorParameter : aegpMemorySize(handle, bytes);
}

std::int32_t resizeMemory(const char*, std::uint32_t bytes, AEGP_MemHandle handle) {
  return resizeAegpMemory(handle, bytes);
}

std::int32_t freeMemory(AEGP_MemHandle handle) {
  return freeAegpMemory(handle);
}
std::int32_t unlockMemory(AEGP_MemHandle handle) {
  return unlockAegpMemory(handle);
}

}  // namespace

const void* aegpUtilitySuite() {
  static const AEGP_UtilitySuite5 table = [] {
    AEGP_UtilitySuite5 t{};
    HOST_UNUSED(t, AEGP_ReportInfo);
    HOST_UNUSED(t, AEGP_GetDriverPluginInitFuncVersion);
    HOST_UNUSED(t, AEGP_GetDriverImplementationVersion);
    HOST_UNUSED(t, AEGP_StartQuietErrors);
    HOST_UNUSED(t, AEGP_EndQuietErrors);
    HOST_UNUSED(t, AEGP_GetLastErrorMessage);
    HOST_UNUSED(t, AEGP_StartUndoGroup);
    HOST_UNUSED(t, AEGP_EndUndoGroup);
    t.AEGP_RegisterWithAEGP = registerPlugin;
    HOST_UNUSED(t, AEGP_GetMainHWND);
    HOST_UNUSED(t, AEGP_ShowHideAllFloaters);
    HOST_UNUSED(t, AEGP_PaintPalGetForeColor);
    HOST_UNUSED(t, AEGP_PaintPalGetBackColor);
    HOST_UNUSED(t, AEGP_PaintPalSetForeColor);
    HOST_UNUSED(t, AEGP_PaintPalSetBackColor);
    HOST_UNUSED(t, AEGP_CharPalGetFillColor);
    HOST_UNUSED(t, AEGP_CharPalGetStrokeColor);
    HOST_UNUSED(t, AEGP_CharPalSetFillColor);
    HOST_UNUSED(t, AEGP_CharPalSetStrokeColor);
    HOST_UNUSED(t, AEGP_CharPalIsFillColorUIFrontmost);
    HOST_UNUSED(t, AEGP_ConvertFpLongToHSFRatio);
    HOST_UNUSED(t, AEGP_ConvertHSFRatioToFpLong);
    HOST_UNUSED(t, AEGP_CauseIdleRoutinesToBeCalled);
    HOST_UNUSED(t, AEGP_GetSuppressInteractiveUI);
    HOST_UNUSED(t, AEGP_WriteToOSConsole);
    HOST_UNUSED(t, AEGP_WriteToDebugLog);
    HOST_UNUSED(t, AEGP_IsScriptingAvailable);
    t.AEGP_ExecuteScript = executeScript;
    HOST_UNUSED(t, AEGP_HostIsActivated);
    HOST_UNUSED(t, AEGP_GetPluginPlatformRef);
    HOST_UNUSED(t, AEGP_UpdateFontList);
    return t;
  }();
  return &table;
}

const void* aegpMemorySuite() {
  static const AEGP_MemorySuite1 table = [] {
    AEGP_MemorySuite1 t{};
    t.AEGP_NewMemHandle = newMemory;
    t.AEGP_FreeMemHandle = freeMemory;
    t.AEGP_LockMemHandle = lockMemory;
    t.AEGP_UnlockMemHandle = unlockMemory;
    t.AEGP_GetMemHandleSize = memorySize;
    t.AEGP_ResizeMemHandle = resizeMemory;
    HOST_UNUSED(t, AEGP_SetMemReportingOn);
    HOST_UNUSED(t, AEGP_GetMemStats);
    return t;
  }();
  return &table;
}

}  // namespace host
