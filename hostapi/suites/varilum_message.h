// hostapi/suites/varilum_message.h — messages for the user, in hosts that show them themselves.
#pragma once

#include <cstdint>

// Optional. Hosts that offer it get the effect's message boxes; without it they are the system's,
// or lines on standard error where there are none. Must not block. [any thread]
struct Varilum_MessageSuite1 {
  // caption; text; gives 0 when the message was taken
  std::int32_t (*showMessage)(const char*, const char*);
};

inline constexpr const char* kVarilumMessageSuite = "Varilum Message Suite";

inline constexpr std::int32_t kVarilumMessageSuiteVersion1 = 1;
