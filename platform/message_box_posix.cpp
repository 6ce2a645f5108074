// platform/message_box_posix.cpp — messages where the effect has no windows of its own.
#include <cstdio>

#include "access/suite.h"
#include "hostapi/suites/varilum_message.h"
#include "platform/message_box.h"

namespace varilum {

void showMessageBox(const PF_InData& in, const char* caption, const char* text) noexcept {
  const OptionalSuite<Varilum_MessageSuite1> listener{in, kVarilumMessageSuite,
                                                      kVarilumMessageSuiteVersion1};
  if (listener && listener->showMessage(caption, text) == 0) return;
  std::fprintf(stderr, "%s: %s\n", caption, text);
}

}  // namespace varilum
