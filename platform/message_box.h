// platform/message_box.h — telling the user something outside the host's own channels.
#pragma once

#include "hostapi/command_data.h"

namespace varilum {

// Through the host's message suite where the host has one. Otherwise, on Windows, a message box
// without owner, which waits for the user; elsewhere, and when the environment says
// VARILUM_HEADLESS=1, a line on standard error, and nothing waits.
// [any thread]
void showMessageBox(const PF_InData& in, const char* caption, const char* text) noexcept;

}  // namespace varilum
