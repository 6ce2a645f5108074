// platform/message_box_windows.cpp — message boxes of Windows.
#include <windows.h>

#include "platform/message_box.h"

namespace varilum {

void showMessageBox(const PF_InData&, const char* caption, const char* text) noexcept {
  MessageBoxA(nullptr, text, caption, MB_OK);
}

}  // namespace varilum
