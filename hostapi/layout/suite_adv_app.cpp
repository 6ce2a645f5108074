// hostapi/layout/suite_adv_app.cpp — sizes and offsets of hostapi/suites/adv_app.h, held at compile
// time.
#include "hostapi/layout/assert_layout.h"
#include "hostapi/suites/adv_app.h"

ASSERT_SIZE(PF_AdvAppSuite2, 88);
ASSERT_ALIGN(PF_AdvAppSuite2, 8);
ASSERT_FIELD(PF_AdvAppSuite2, PF_SetProjectDirty, 0, 8);
ASSERT_FIELD(PF_AdvAppSuite2, PF_SaveProject, 8, 8);
ASSERT_FIELD(PF_AdvAppSuite2, PF_SaveBackgroundState, 16, 8);
ASSERT_FIELD(PF_AdvAppSuite2, PF_ForceForeground, 24, 8);
ASSERT_FIELD(PF_AdvAppSuite2, PF_RestoreBackgroundState, 32, 8);
ASSERT_FIELD(PF_AdvAppSuite2, PF_RefreshAllWindows, 40, 8);
ASSERT_FIELD(PF_AdvAppSuite2, PF_InfoDrawText, 48, 8);
ASSERT_FIELD(PF_AdvAppSuite2, PF_InfoDrawColor, 56, 8);
ASSERT_FIELD(PF_AdvAppSuite2, PF_InfoDrawText3, 64, 8);
ASSERT_FIELD(PF_AdvAppSuite2, PF_InfoDrawText3Plus, 72, 8);
ASSERT_FIELD(PF_AdvAppSuite2, PF_AppendInfoText, 80, 8);
