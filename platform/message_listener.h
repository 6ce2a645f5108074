// platform/message_listener.h — hosts that show messages themselves.
#pragma once

#include "access/suite.h"
#include "hostapi/suites/varilum_message.h"

namespace varilum {

// Hands the message to the host's message suite. False when the host has none, or did not take it.
inline bool tellListener(const PF_InData& in, const char* caption, const char* text) noexcept {
  const OptionalSuite<Varilum_MessageSuite1> listener{in, kVarilumMessageSuite,
                                                      kVarilumMessageSuiteVersion1};
  return listener && listener->showMessage(caption, text) == 0;
}

}  // namespace varilum
