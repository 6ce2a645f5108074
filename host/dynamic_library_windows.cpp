// host/dynamic_library_windows.cpp — loading libraries and their resources on Windows.
#include <windows.h>

#include "host/dynamic_library.h"
#include "host/error.h"
#include "hostapi/property_list.h"

namespace host {

void* openLibrary(const std::filesystem::path& path) {
  HMODULE library = LoadLibraryW(std::filesystem::absolute(path).c_str());
  if (library == nullptr) {
    throw ModuleError("The effect cannot be loaded: system error " +
                      std::to_string(GetLastError()) + ".");
  }
  return library;
}

void closeLibrary(void* library) noexcept {
  FreeLibrary(static_cast<HMODULE>(library));
}

void* findFunction(void* library, const std::string& name) noexcept {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name.c_str()));
}

std::optional<std::vector<std::byte>> findPropertyList(void* library,
                                                       const std::filesystem::path&) {
  const auto module = static_cast<HMODULE>(library);
  HRSRC found = FindResourceA(
      module, reinterpret_cast<LPCSTR>(static_cast<ULONG_PTR>(kPropertyListResourceId)),
      kPropertyListResourceType);
  if (found == nullptr) return std::nullopt;
  HGLOBAL loaded = LoadResource(module, found);
  const auto* first = static_cast<const std::byte*>(LockResource(loaded));
  if (first == nullptr) return std::nullopt;
  return std::vector<std::byte>(first, first + SizeofResource(module, found));
}

}  // namespace host
