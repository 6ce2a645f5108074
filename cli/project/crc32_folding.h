// cli/project/crc32_folding.h — long data folded into sixteen bytes of the same CRC-32.
#pragma once

#include <cstddef>
#include <cstdint>

namespace cli {

/// Data whose first four bytes have had the checksum so far added (exclusive or), in `count` bytes,
/// a multiple of 64 and at least 64, has the CRC of these sixteen bytes.
struct Folded {
  std::uint8_t bytes[16];
};
using FoldForCrc32 = Folded (*)(std::uint32_t before, const std::byte* data, std::size_t count);

/// The way of this processor, chosen once; null where there is none.
FoldForCrc32 foldForCrc32() noexcept;

#if defined(__x86_64__)
/// For processors that multiply without carry.
Folded foldByMultiplying(std::uint32_t before, const std::byte* data, std::size_t count);
#endif

}  // namespace cli
