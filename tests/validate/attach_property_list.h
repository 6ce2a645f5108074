// tests/validate/attach_property_list.h — giving a built library another property list.
#pragma once

#include <filesystem>
#include <string>

/// In the library's resources on Windows, in a file beside it elsewhere. Throws std::runtime_error.
void attachPropertyList(const std::filesystem::path& library, const std::string& list);
