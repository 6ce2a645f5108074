// hostapi/layout/suite_app.cpp — sizes and offsets of hostapi/suites/app.h, held at compile time.
#include "hostapi/layout/assert_layout.h"
#include "hostapi/suites/app.h"

ASSERT_SIZE(PF_App_Color, 6);
ASSERT_ALIGN(PF_App_Color, 2);
ASSERT_FIELD(PF_App_Color, red, 0, 2);
ASSERT_FIELD(PF_App_Color, green, 2, 2);
ASSERT_FIELD(PF_App_Color, blue, 4, 2);

ASSERT_SIZE(PF_AppPersonalTextInfo, 192);
ASSERT_ALIGN(PF_AppPersonalTextInfo, 1);
ASSERT_FIELD(PF_AppPersonalTextInfo, name, 0, 64);
ASSERT_FIELD(PF_AppPersonalTextInfo, org, 64, 64);
ASSERT_FIELD(PF_AppPersonalTextInfo, serial_str, 128, 64);

ASSERT_SIZE(PF_FontName, 256);
ASSERT_ALIGN(PF_FontName, 1);
ASSERT_FIELD(PF_FontName, font_nameAC, 0, 256);

ASSERT_SIZE(PFAppSuite4, 88);
ASSERT_ALIGN(PFAppSuite4, 8);
ASSERT_FIELD(PFAppSuite4, PF_AppGetBgColor, 0, 8);
ASSERT_FIELD(PFAppSuite4, PF_AppGetColor, 8, 8);
ASSERT_FIELD(PFAppSuite4, PF_GetPersonalInfo, 16, 8);
ASSERT_FIELD(PFAppSuite4, PF_GetFontStyleSheet, 24, 8);
ASSERT_FIELD(PFAppSuite4, PF_SetCursor, 32, 8);
ASSERT_FIELD(PFAppSuite4, PF_IsRenderEngine, 40, 8);
ASSERT_FIELD(PFAppSuite4, PF_AppColorPickerDialog, 48, 8);
ASSERT_FIELD(PFAppSuite4, PF_GetMouse, 56, 8);
ASSERT_FIELD(PFAppSuite4, PF_InvalidateRect, 64, 8);
ASSERT_FIELD(PFAppSuite4, PF_ConvertLocalToGlobal, 72, 8);
ASSERT_FIELD(PFAppSuite4, PF_GetColorAtGlobalPoint, 80, 8);

ASSERT_SIZE(PFAppSuite6, 120);
ASSERT_ALIGN(PFAppSuite6, 8);
ASSERT_FIELD(PFAppSuite6, PF_AppGetBgColor, 0, 8);
ASSERT_FIELD(PFAppSuite6, PF_AppGetColor, 8, 8);
ASSERT_FIELD(PFAppSuite6, PF_AppGetLanguage, 16, 8);
ASSERT_FIELD(PFAppSuite6, PF_GetPersonalInfo, 24, 8);
ASSERT_FIELD(PFAppSuite6, PF_GetFontStyleSheet, 32, 8);
ASSERT_FIELD(PFAppSuite6, PF_SetCursor, 40, 8);
ASSERT_FIELD(PFAppSuite6, PF_IsRenderEngine, 48, 8);
ASSERT_FIELD(PFAppSuite6, PF_AppColorPickerDialog, 56, 8);
ASSERT_FIELD(PFAppSuite6, PF_GetMouse, 64, 8);
ASSERT_FIELD(PFAppSuite6, PF_InvalidateRect, 72, 8);
ASSERT_FIELD(PFAppSuite6, PF_ConvertLocalToGlobal, 80, 8);
ASSERT_FIELD(PFAppSuite6, PF_GetColorAtGlobalPoint, 88, 8);
ASSERT_FIELD(PFAppSuite6, PF_CreateNewAppProgressDialog, 96, 8);
ASSERT_FIELD(PFAppSuite6, PF_AppProgressDialogUpdate, 104, 8);
ASSERT_FIELD(PFAppSuite6, PF_DisposeAppProgressDialog, 112, 8);
