// hostapi/suites/varilum_message.h — messages for the user, in hosts without a windowing system.
#pragma once

#include <cstdint>

// Offered by hosts on systems where the effect has no message boxes of its own. Optional: without
// it messages go to standard error. Must not block. [any thread]
struct Varilum_MessageSuite1 {
  // caption; text; gives 0 when the message was taken
  std::int32_t (*showMessage)(const char*, const char*);
};

inline constexpr const char* kVarilumMessageSuite = "Varilum Message Suite";

inline constexpr std::int32_t kVarilumMessageSuiteVersion1 = 1;
