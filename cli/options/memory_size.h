// cli/options/memory_size.h — amounts of memory: as people write them, and the machine's own.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace cli {

/// "512M", "2G", "1.5g", "65536K", "1048576": bytes, or units of 1024. Nothing for other texts.
std::optional<std::uint64_t> parseMemorySize(std::string_view text);

/// Memory that the program may hope for, in bytes: the machine's, or less where the system says
/// that this program may have less. 0 if the system does not tell.
std::uint64_t machineMemory();

}  // namespace cli
