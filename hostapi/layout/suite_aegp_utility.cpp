// hostapi/layout/suite_aegp_utility.cpp — sizes and offsets of hostapi/suites/aegp_utility.h, held
// at compile time.
#include "hostapi/layout/assert_layout.h"
#include "hostapi/suites/aegp_utility.h"

ASSERT_SIZE(AEGP_ColorVal, 32);
ASSERT_ALIGN(AEGP_ColorVal, 8);
ASSERT_FIELD(AEGP_ColorVal, alphaF, 0, 8);
ASSERT_FIELD(AEGP_ColorVal, redF, 8, 8);
ASSERT_FIELD(AEGP_ColorVal, greenF, 16, 8);
ASSERT_FIELD(AEGP_ColorVal, blueF, 24, 8);

ASSERT_SIZE(AEGP_ErrReportState, 48);
ASSERT_ALIGN(AEGP_ErrReportState, 4);
ASSERT_FIELD(AEGP_ErrReportState, reservedAL, 0, 48);

ASSERT_SIZE(AEGP_UtilitySuite5, 248);
ASSERT_ALIGN(AEGP_UtilitySuite5, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_ReportInfo, 0, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_GetDriverPluginInitFuncVersion, 8, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_GetDriverImplementationVersion, 16, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_StartQuietErrors, 24, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_EndQuietErrors, 32, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_GetLastErrorMessage, 40, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_StartUndoGroup, 48, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_EndUndoGroup, 56, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_RegisterWithAEGP, 64, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_GetMainHWND, 72, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_ShowHideAllFloaters, 80, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_PaintPalGetForeColor, 88, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_PaintPalGetBackColor, 96, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_PaintPalSetForeColor, 104, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_PaintPalSetBackColor, 112, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_CharPalGetFillColor, 120, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_CharPalGetStrokeColor, 128, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_CharPalSetFillColor, 136, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_CharPalSetStrokeColor, 144, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_CharPalIsFillColorUIFrontmost, 152, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_ConvertFpLongToHSFRatio, 160, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_ConvertHSFRatioToFpLong, 168, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_CauseIdleRoutinesToBeCalled, 176, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_GetSuppressInteractiveUI, 184, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_WriteToOSConsole, 192, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_WriteToDebugLog, 200, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_IsScriptingAvailable, 208, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_ExecuteScript, 216, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_HostIsActivated, 224, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_GetPluginPlatformRef, 232, 8);
ASSERT_FIELD(AEGP_UtilitySuite5, AEGP_UpdateFontList, 240, 8);
