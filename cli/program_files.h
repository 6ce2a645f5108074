// cli/program_files.h — where this program is, and how libraries are called beside it.
#pragma once

#include <filesystem>

namespace cli {

/// The effect library's file name on this system.
extern const char* const kEffectLibrary;

/// The folder that this program was started from; empty if the system does not tell.
std::filesystem::path programFolder();

}  // namespace cli
