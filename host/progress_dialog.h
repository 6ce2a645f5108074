// host/progress_dialog.h — the application's progress dialog, shown to the listener.
#pragma once

#include <cstdint>

#include "hostapi/scalars.h"

namespace host {

// [UI thread] title and cancel label: UTF-16 or null; non-zero = indeterminate; out dialog
std::int32_t createProgressDialog(const std::uint16_t*, const std::uint16_t*, char,
                                  PF_AppProgressDialogP*);
// dialog; count, which may exceed the total by one; total. 517 once the user said stop.
std::int32_t updateProgressDialog(PF_AppProgressDialogP, std::int32_t, std::int32_t);
std::int32_t disposeProgressDialog(PF_AppProgressDialogP);

// [UI thread] The effect's own dialog: title; status; position 0..100. 517 when the user said stop.
std::int32_t showEffectProgress(const char*, const char*, std::int32_t);

}  // namespace host
