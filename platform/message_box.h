// platform/message_box.h — telling the user something outside the host's own channels.
#pragma once

#include "hostapi/command_data.h"

namespace varilum {

// Windows: a message box without owner, which waits for the user. Elsewhere the text goes to the
// host's message suite, or to standard error when the host has none, and nothing waits.
// [any thread]
void showMessageBox(const PF_InData& in, const char* caption, const char* text) noexcept;

}  // namespace varilum
