// hostapi/suites/aegp_utility.h — registration and scripts.
#pragma once

#include <cstdint>

#include "hostapi/geometry.h"
#include "hostapi/scalars.h"

struct AEGP_ColorVal {
  double alphaF;
  double redF;
  double greenF;
  double blueF;
};

struct AEGP_ErrReportState {
  std::int32_t reservedAL[12];
};

// [UI thread] Acquired as version 11. RegisterWithAEGP is legal in GLOBAL_SETUP only.
struct AEGP_UtilitySuite5 {
  std::int32_t (*AEGP_ReportInfo)(std::int32_t, const char*);
  std::int32_t (*AEGP_GetDriverPluginInitFuncVersion)(std::int16_t*, std::int16_t*);
  std::int32_t (*AEGP_GetDriverImplementationVersion)(std::int16_t*, std::int16_t*);
  std::int32_t (*AEGP_StartQuietErrors)(AEGP_ErrReportState*);
  std::int32_t (*AEGP_EndQuietErrors)(std::uint8_t, AEGP_ErrReportState*);
  std::int32_t (*AEGP_GetLastErrorMessage)(std::int32_t, char*, std::int32_t*);
  std::int32_t (*AEGP_StartUndoGroup)(const char*);
  std::int32_t (*AEGP_EndUndoGroup)();
  // global refcon; plug-in name (at most 32 bytes with NUL); out plug-in id
  std::int32_t (*AEGP_RegisterWithAEGP)(AEGP_GlobalRefcon, const char*, std::int32_t*);
  // out window handle
  std::int32_t (*AEGP_GetMainHWND)(void*);
  std::int32_t (*AEGP_ShowHideAllFloaters)(std::uint8_t);
  std::int32_t (*AEGP_PaintPalGetForeColor)(AEGP_ColorVal*);
  std::int32_t (*AEGP_PaintPalGetBackColor)(AEGP_ColorVal*);
  std::int32_t (*AEGP_PaintPalSetForeColor)(const AEGP_ColorVal*);
  std::int32_t (*AEGP_PaintPalSetBackColor)(const AEGP_ColorVal*);
  std::int32_t (*AEGP_CharPalGetFillColor)(std::uint8_t*, AEGP_ColorVal*);
  std::int32_t (*AEGP_CharPalGetStrokeColor)(std::uint8_t*, AEGP_ColorVal*);
  std::int32_t (*AEGP_CharPalSetFillColor)(const AEGP_ColorVal*);
  std::int32_t (*AEGP_CharPalSetStrokeColor)(const AEGP_ColorVal*);
  std::int32_t (*AEGP_CharPalIsFillColorUIFrontmost)(std::uint8_t*);
  std::int32_t (*AEGP_ConvertFpLongToHSFRatio)(double, A_Ratio*);
  std::int32_t (*AEGP_ConvertHSFRatioToFpLong)(A_Ratio, double*);
  std::int32_t (*AEGP_CauseIdleRoutinesToBeCalled)();
  std::int32_t (*AEGP_GetSuppressInteractiveUI)(std::uint8_t*);
  std::int32_t (*AEGP_WriteToOSConsole)(const char*);
  std::int32_t (*AEGP_WriteToDebugLog)(const char*, const char*, const char*);
  std::int32_t (*AEGP_IsScriptingAvailable)(std::uint8_t*);
  // plug-in id; script text; zero = UTF-8, non-zero = platform encoding; out result text handle
  // (argument may be null); out error text handle (argument may be null)
  std::int32_t (*AEGP_ExecuteScript)(std::int32_t, const char*, std::uint8_t, AEGP_MemHandle*,
                                     AEGP_MemHandle*);
  std::int32_t (*AEGP_HostIsActivated)(std::uint8_t*);
  std::int32_t (*AEGP_GetPluginPlatformRef)(std::int32_t, void**);
  std::int32_t (*AEGP_UpdateFontList)();
};

inline constexpr const char* kAEGPUtilitySuite = "AEGP Utility Suite";

inline constexpr std::int32_t kAEGPUtilitySuiteVersion5 = 11;

// Results of the AEGP suites.
inline constexpr std::int32_t A_Err_NONE = 0;
inline constexpr std::int32_t A_Err_GENERIC = 1;
inline constexpr std::int32_t A_Err_STRUCT = 2;
inline constexpr std::int32_t A_Err_PARAMETER = 3;
inline constexpr std::int32_t A_Err_ALLOC = 4;
inline constexpr std::int32_t A_Err_WRONG_THREAD = 5;
inline constexpr std::int32_t A_Err_CONST_PROJECT_MODIFICATION = 6;
inline constexpr std::int32_t A_Err_RESERVED_7 = 7;
inline constexpr std::int32_t A_Err_RESERVED_8 = 8;
inline constexpr std::int32_t A_Err_RESERVED_9 = 9;
inline constexpr std::int32_t A_Err_RESERVED_10 = 10;
inline constexpr std::int32_t A_Err_RESERVED_11 = 11;
inline constexpr std::int32_t A_Err_RESERVED_12 = 12;
inline constexpr std::int32_t A_Err_MISSING_SUITE = 13;
inline constexpr std::int32_t A_Err_RESERVED_14 = 14;
inline constexpr std::int32_t A_Err_RESERVED_15 = 15;
inline constexpr std::int32_t A_Err_RESERVED_16 = 16;
inline constexpr std::int32_t A_Err_RESERVED_17 = 17;
inline constexpr std::int32_t A_Err_RESERVED_18 = 18;
inline constexpr std::int32_t A_Err_RESERVED_19 = 19;
inline constexpr std::int32_t A_Err_RESERVED_20 = 20;
inline constexpr std::int32_t A_Err_RESERVED_21 = 21;
inline constexpr std::int32_t A_Err_NOT_IN_CACHE_OR_COMPUTE_PENDING = 22;
inline constexpr std::int32_t A_Err_PROJECT_LOAD_FATAL = 23;
inline constexpr std::int32_t A_Err_EFFECT_APPLY_FATAL = 24;
inline constexpr std::int32_t A_Err_LAST = 25;
