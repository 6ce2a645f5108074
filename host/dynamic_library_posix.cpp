// host/dynamic_library_posix.cpp — loading libraries with the system's dynamic linker.
#include <dlfcn.h>

#include <fstream>
#include <iterator>

#include "host/dynamic_library.h"
#include "host/error.h"

namespace host {

void* openLibrary(const std::filesystem::path& path) {
  void* library = dlopen(std::filesystem::absolute(path).c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    throw ModuleError("The effect cannot be loaded: " + std::string(dlerror()));
  }
  return library;
}

void closeLibrary(void* library) noexcept {
  dlclose(library);
}

void* findFunction(void* library, const std::string& name) noexcept {
  return dlsym(library, name.c_str());
}

std::optional<std::vector<std::byte>> findPropertyList(void*, const std::filesystem::path& path) {
  std::filesystem::path side = path;
  side.replace_extension(".pipl");
  std::ifstream file(side, std::ios::binary);
  if (!file) return std::nullopt;
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  const auto* first = reinterpret_cast<const std::byte*>(text.data());
  return std::vector<std::byte>(first, first + text.size());
}

}  // namespace host
