// hostapi/suites/varilum_progress.h — the effect's progress, in hosts that show it themselves.
#pragma once

#include <cstdint>

// Optional. Hosts that offer it get what the effect's own progress dialog would show. Must not
// block. [UI thread, while a command is under way]
struct Varilum_ProgressSuite1 {
  // title; status; position 0..100; gives 0, or PF_Interrupt_CANCEL when the user wants to stop
  std::int32_t (*showProgress)(const char*, const char*, std::int32_t);
};

inline constexpr const char* kVarilumProgressSuite = "Varilum Progress Suite";

inline constexpr std::int32_t kVarilumProgressSuiteVersion1 = 1;
