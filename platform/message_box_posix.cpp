// platform/message_box_posix.cpp — messages where the effect has no windows of its own.
#include <cstdio>

#include "platform/message_box.h"
#include "platform/message_listener.h"

namespace varilum {

void showMessageBox(const PF_InData& in, const char* caption, const char* text) noexcept {
  if (tellListener(in, caption, text)) return;
  std::fprintf(stderr, "%s: %s\n", caption, text);
}

}  // namespace varilum
