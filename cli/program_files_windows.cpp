// cli/program_files_windows.cpp — where this program is on Windows.
#include <windows.h>

#include <array>

#include "cli/program_files.h"

namespace cli {

const char* const kEffectLibrary = "Varilum4.aex";

std::filesystem::path programFolder() {
  std::array<wchar_t, 32768> name{};
  const DWORD length =
      GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size() - 1));
  return std::filesystem::path(std::wstring(name.data(), length)).parent_path();
}

}  // namespace cli
