// platform/cup_dialog_template.h — the worker dialog's window, as the system reads it from memory.
#pragma once

#include <windows.h>

namespace varilum {

// In static storage.
const DLGTEMPLATE* progressTemplate() noexcept;

}  // namespace varilum
