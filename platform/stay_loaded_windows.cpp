// platform/stay_loaded_windows.cpp — keeping this library in its process on Windows.
#include <windows.h>

#include "platform/stay_loaded.h"

namespace varilum {

// Without success nothing is lost but a slot at the next unloading.
void stayLoaded() noexcept {
  HMODULE pinned = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                     reinterpret_cast<LPCWSTR>(&stayLoaded), &pinned);
}

}  // namespace varilum
