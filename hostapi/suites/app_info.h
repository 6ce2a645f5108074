// hostapi/suites/app_info.h — which application of the family, and its version.
#pragma once

#include <cstdint>

struct VersionInfo {
  std::uint32_t major;
  std::uint32_t minor;
  std::uint32_t patch;
};

struct LanguageInfo {
  char languageID[6];
};

struct PrSDKAppInfoSuite {
  // selector; out buffer: 0 = uint32_t code, 1 = VersionInfo, 2 = uint32_t build, 3 = LanguageInfo
  std::int32_t (*GetAppInfo)(std::int32_t, void*);
};

inline constexpr const char* kPrSDKAppInfoSuite = "MediaCore App Info Suite";

inline constexpr std::int32_t kPrSDKAppInfoSuiteVersion = 3;

inline constexpr std::int32_t kAppInfo_AppFourCC = 0;
inline constexpr std::int32_t kAppInfo_Version = 1;
inline constexpr std::int32_t kAppInfo_Build = 2;
inline constexpr std::int32_t kAppInfo_Language = 3;

inline constexpr std::int32_t kAppPremierePro = 0x5050726F;
inline constexpr std::int32_t kAppPremiereElements = 0x5072456C;
inline constexpr std::int32_t kAppAfterEffects = 0x46585443;
inline constexpr std::int32_t kAppMediaEncoder = 0x414D4520;
inline constexpr std::int32_t kAppPrelude = 0x50524C44;
inline constexpr std::int32_t kAppAudition = 0x41644175;
