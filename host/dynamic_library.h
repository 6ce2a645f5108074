// host/dynamic_library.h — loading a library of the system, and what stands in it.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace host {

// Throws ModuleError with the system's reason.
void* openLibrary(const std::filesystem::path& path);
void closeLibrary(void* library) noexcept;
// Null when there is no such function.
void* findFunction(void* library, const std::string& name) noexcept;
// The property list's bytes, from the library's resource or the file beside it.
std::optional<std::vector<std::byte>> findPropertyList(void* library,
                                                       const std::filesystem::path& path);

}  // namespace host
