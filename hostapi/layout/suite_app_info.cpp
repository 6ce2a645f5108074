// hostapi/layout/suite_app_info.cpp — sizes and offsets of hostapi/suites/app_info.h, held at
// compile time.
#include "hostapi/layout/assert_layout.h"
#include "hostapi/suites/app_info.h"

ASSERT_SIZE(VersionInfo, 12);
ASSERT_FIELD(VersionInfo, major, 0, 4);
ASSERT_FIELD(VersionInfo, minor, 4, 4);
ASSERT_FIELD(VersionInfo, patch, 8, 4);

ASSERT_SIZE(LanguageInfo, 6);
ASSERT_FIELD(LanguageInfo, languageID, 0, 6);

ASSERT_SIZE(PrSDKAppInfoSuite, 8);
ASSERT_FIELD(PrSDKAppInfoSuite, GetAppInfo, 0, 8);
