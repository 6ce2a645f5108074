// hostapi/suites/app.h — facts of the application and its progress dialog.
#pragma once

#include <cstdint>

#include "hostapi/geometry.h"
#include "hostapi/scalars.h"

struct PF_Context;
struct PF_PixelFloat;
struct PF_Point;

struct PF_App_Color {
  std::uint16_t red;
  std::uint16_t green;
  std::uint16_t blue;
};

struct PF_AppPersonalTextInfo {
  char name[64];
  char org[64];
  char serial_str[64];
};

struct PF_FontName {
  char font_nameAC[256];
};

// The older table, acquired as version 6: background colour and is-render-engine.
struct PFAppSuite4 {
  // out colour
  std::int32_t (*PF_AppGetBgColor)(PF_App_Color*);
  // colour selector; out colour
  std::int32_t (*PF_AppGetColor)(std::int16_t, PF_App_Color*);
  std::int32_t (*PF_GetPersonalInfo)(PF_AppPersonalTextInfo*);
  std::int32_t (*PF_GetFontStyleSheet)(std::int32_t, PF_FontName*, std::int16_t*, std::int16_t*,
                                       std::int16_t*);
  // cursor kind
  std::int32_t (*PF_SetCursor)(std::int32_t);
  // out flag, non-zero when no user interface
  std::int32_t (*PF_IsRenderEngine)(char*);
  std::int32_t (*PF_AppColorPickerDialog)(const char*, const PF_PixelFloat*, char, PF_PixelFloat*);
  std::int32_t (*PF_GetMouse)(PF_Point*);
  std::int32_t (*PF_InvalidateRect)(PF_Context**, const PF_Rect*);
  std::int32_t (*PF_ConvertLocalToGlobal)(const PF_Point*, PF_Point*);
  std::int32_t (*PF_GetColorAtGlobalPoint)(const PF_Point*, std::int16_t, std::int16_t,
                                           PF_PixelFloat*);
};

// The newest table, acquired as version 1: progress dialog; is-render-engine one slot later.
struct PFAppSuite6 {
  // out colour
  std::int32_t (*PF_AppGetBgColor)(PF_App_Color*);
  // colour selector; out colour
  std::int32_t (*PF_AppGetColor)(std::int16_t, PF_App_Color*);
  std::int32_t (*PF_AppGetLanguage)(char*);
  std::int32_t (*PF_GetPersonalInfo)(PF_AppPersonalTextInfo*);
  std::int32_t (*PF_GetFontStyleSheet)(std::int32_t, PF_FontName*, std::int16_t*, std::int16_t*,
                                       std::int16_t*);
  // cursor kind
  std::int32_t (*PF_SetCursor)(std::int32_t);
  // out flag, non-zero when no user interface
  std::int32_t (*PF_IsRenderEngine)(char*);
  std::int32_t (*PF_AppColorPickerDialog)(const char*, const PF_PixelFloat*, char, PF_PixelFloat*);
  std::int32_t (*PF_GetMouse)(PF_Point*);
  std::int32_t (*PF_InvalidateRect)(PF_Context**, const PF_Rect*);
  std::int32_t (*PF_ConvertLocalToGlobal)(const PF_Point*, PF_Point*);
  std::int32_t (*PF_GetColorAtGlobalPoint)(const PF_Point*, std::int16_t, std::int16_t,
                                           PF_PixelFloat*);
  // title, UTF-16 NUL-terminated; cancel label or null; non-zero = indeterminate; out dialog
  // session
  std::int32_t (*PF_CreateNewAppProgressDialog)(const std::uint16_t*, const std::uint16_t*, char,
                                                PF_AppProgressDialogP*);
  // session; count; total; gives 517 when the user cancelled
  std::int32_t (*PF_AppProgressDialogUpdate)(PF_AppProgressDialogP, std::int32_t, std::int32_t);
  // session (call it on every path)
  std::int32_t (*PF_DisposeAppProgressDialog)(PF_AppProgressDialogP);
};

inline constexpr const char* kPFAppSuite = "PF AE App Suite";

inline constexpr std::int32_t kPFAppSuiteVersion4 = 6;
inline constexpr std::int32_t kPFAppSuiteVersion6 = 1;

inline constexpr std::int32_t PF_APP_LANG_TAG_SIZE = 6;
