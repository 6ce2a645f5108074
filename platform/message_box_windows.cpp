// platform/message_box_windows.cpp — message boxes of Windows.
#include <windows.h>

#include <cstdio>

#include "platform/headless.h"
#include "platform/message_box.h"
#include "platform/message_listener.h"

namespace varilum {

void showMessageBox(const PF_InData& in, const char* caption, const char* text) noexcept {
  if (tellListener(in, caption, text)) return;
  if (isHeadless()) {
    std::fprintf(stderr, "%s: %s\n", caption, text);
    return;
  }
  MessageBoxA(nullptr, text, caption, MB_OK);
}

}  // namespace varilum
