// cli/project/crc32.h — the checksum of project files and frames: CRC-32 as in zip, polynomial
// 0xEDB88320.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace cli {

/// Of `bytes`, going on from the checksum of what came before them (0 at the start).
std::uint32_t crc32(std::span<const std::byte> bytes, std::uint32_t before = 0) noexcept;

}  // namespace cli
