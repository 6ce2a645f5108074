// host/suites_application.cpp — suites that speak of the application: its looks, identity,
// messages.
#include <cstring>

#include "host/command.h"
#include "host/effect_state.h"
#include "host/panel_state.h"
#include "host/progress_dialog.h"
#include "host/suite_tables.h"
#include "host/unused_slot.h"
#include "hostapi/suites/adv_app.h"
#include "hostapi/suites/app.h"
#include "hostapi/suites/app_info.h"
#include "hostapi/suites/varilum_message.h"
#include "hostapi/suites/varilum_progress.h"

namespace host {
namespace {

constexpr PF_App_Color kPanelGrey{0x2424, 0x2424, 0x2424};
constexpr char kLanguage[PF_APP_LANG_TAG_SIZE] = "en_US";

std::int32_t backgroundColour(PF_App_Color* colour) {
  HostState* host = currentHost();
  if (host == nullptr || colour == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  if (const std::int32_t error = host->faults.check(CallKind::backgroundColour)) return error;
  *colour = kPanelGrey;
  if (const PanelState* panel = currentPanel()) {
    const auto& background = panel->options.background;
    *colour = {background[0], background[1], background[2]};
  }
  return PF_Err_NONE;
}

std::int32_t isRenderEngine(char* answer) {
  HostState* host = currentHost();
  if (host == nullptr || answer == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  if (const std::int32_t error = host->faults.check(CallKind::isRenderEngine)) return error;
  *answer = host->options.renderEngine ? 1 : 0;
  return PF_Err_NONE;
}

std::int32_t language(char* tag) {
  if (tag == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  std::memcpy(tag, kLanguage, sizeof kLanguage);
  return PF_Err_NONE;
}

template <typename Suite>
void leaveCommonUnused(Suite& t) {
  HOST_UNUSED(t, PF_AppGetColor);
  HOST_UNUSED(t, PF_GetPersonalInfo);
  HOST_UNUSED(t, PF_GetFontStyleSheet);
  HOST_UNUSED(t, PF_SetCursor);
  HOST_UNUSED(t, PF_AppColorPickerDialog);
  HOST_UNUSED(t, PF_GetMouse);
  HOST_UNUSED(t, PF_InvalidateRect);
  HOST_UNUSED(t, PF_ConvertLocalToGlobal);
  HOST_UNUSED(t, PF_GetColorAtGlobalPoint);
}

std::int32_t drawInfoText(const char* first, const char* second) {
  HostState* host = currentHost();
  if (host == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  if (const std::int32_t error = host->faults.check(CallKind::infoText)) return error;
  Listener* listener = host->listener.load();
  if (listener == nullptr) return PF_Err_NONE;
  try {
    listener->infoText(first != nullptr ? first : "", second != nullptr ? second : "");
    return PF_Err_NONE;
  } catch (...) {
    Command* command = currentCommand();
    return command != nullptr ? command->keepFailure() : PF_Err_INTERNAL_STRUCT_DAMAGED;
  }
}

std::int32_t applicationInfo(std::int32_t selector, void* answer) {
  HostState* host = currentHost();
  if (host == nullptr || answer == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  const auto& version = host->options.appInfo;
  switch (selector) {
    case kAppInfo_AppFourCC:
      *static_cast<std::int32_t*>(answer) = kAppPremierePro;
      return PF_Err_NONE;
    case kAppInfo_Version:
      *static_cast<VersionInfo*>(answer) = {version[0], version[1], version[2]};
      return PF_Err_NONE;
    case kAppInfo_Build:
      *static_cast<std::uint32_t*>(answer) = version[2];
      return PF_Err_NONE;
    case kAppInfo_Language:
      std::memcpy(answer, kLanguage, sizeof kLanguage);
      return PF_Err_NONE;
    default:
      return PF_Err_INVALID_INDEX;
  }
}

std::int32_t showMessage(const char* caption, const char* text) {
  HostState* host = currentHost();
  if (host == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  if (host->listener.load() == nullptr) return PF_Err_INVALID_CALLBACK;
  try {
    host->show(MessageKind::box, caption != nullptr ? caption : "", text != nullptr ? text : "");
    return PF_Err_NONE;
  } catch (...) {
    Command* command = currentCommand();
    return command != nullptr ? command->keepFailure() : PF_Err_INTERNAL_STRUCT_DAMAGED;
  }
}

}  // namespace

const void* appSuite4() {
  static const PFAppSuite4 table = [] {
    PFAppSuite4 t{};
    leaveCommonUnused(t);
    t.PF_AppGetBgColor = backgroundColour;
    t.PF_IsRenderEngine = isRenderEngine;
    return t;
  }();
  return &table;
}

const void* appSuite6() {
  static const PFAppSuite6 table = [] {
    PFAppSuite6 t{};
    leaveCommonUnused(t);
    t.PF_AppGetBgColor = backgroundColour;
    t.PF_AppGetLanguage = language;
    t.PF_IsRenderEngine = isRenderEngine;
    t.PF_CreateNewAppProgressDialog = createProgressDialog;
    t.PF_AppProgressDialogUpdate = updateProgressDialog;
    t.PF_DisposeAppProgressDialog = disposeProgressDialog;
    return t;
  }();
  return &table;
}

const void* advAppSuite() {
  static const PF_AdvAppSuite2 table = [] {
    PF_AdvAppSuite2 t{};
    HOST_UNUSED(t, PF_SetProjectDirty);
    HOST_UNUSED(t, PF_SaveProject);
    HOST_UNUSED(t, PF_SaveBackgroundState);
    HOST_UNUSED(t, PF_ForceForeground);
    HOST_UNUSED(t, PF_RestoreBackgroundState);
    HOST_UNUSED(t, PF_RefreshAllWindows);
    t.PF_InfoDrawText = drawInfoText;
    HOST_UNUSED(t, PF_InfoDrawColor);
    HOST_UNUSED(t, PF_InfoDrawText3);
    HOST_UNUSED(t, PF_InfoDrawText3Plus);
    HOST_UNUSED(t, PF_AppendInfoText);
    return t;
  }();
  return &table;
}

const void* appInfoSuite() {
  static const PrSDKAppInfoSuite table{applicationInfo};
  return &table;
}

const void* progressSuite() {
  static const Varilum_ProgressSuite1 table{showEffectProgress};
  return &table;
}

const void* messageSuite() {
  static const Varilum_MessageSuite1 table{showMessage};
  return &table;
}

}  // namespace host
