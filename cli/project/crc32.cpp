// cli/project/crc32.cpp — CRC-32, eight bytes a step, or 64 where the processor multiplies
// polynomials.
#include "cli/project/crc32.h"

#include <array>

#include "cli/project/crc32_folding.h"

namespace cli {
namespace {

using Tables = std::array<std::array<std::uint32_t, 256>, 8>;

constexpr Tables makeTables() {
  Tables tables{};
  for (std::uint32_t i = 0; i < 256; ++i) {
    std::uint32_t value = i;
    for (int bit = 0; bit < 8; ++bit) value = (value >> 1) ^ ((value & 1U) ? 0xEDB88320U : 0U);
    tables[0][i] = value;
  }
  for (std::size_t t = 1; t < 8; ++t) {
    for (std::size_t i = 0; i < 256; ++i) {
      const std::uint32_t value = tables[t - 1][i];
      tables[t][i] = (value >> 8) ^ tables[0][value & 0xFFU];
    }
  }
  return tables;
}

constexpr Tables kTables = makeTables();

// Goes on with the plain remainder, without the ones that a checksum begins and ends with.
std::uint32_t goOn(std::uint32_t crc, std::span<const std::byte> bytes) noexcept {
  std::size_t i = 0;
  for (; i + 8 <= bytes.size(); i += 8) {
    std::uint32_t next = 0;
    for (std::size_t k = 0; k < 4; ++k) {
      const std::uint32_t byte = std::to_integer<std::uint32_t>(bytes[i + k]);
      next ^= kTables[7 - k][((crc >> (8 * k)) & 0xFFU) ^ byte];
    }
    for (std::size_t k = 4; k < 8; ++k) {
      next ^= kTables[7 - k][std::to_integer<std::uint32_t>(bytes[i + k])];
    }
    crc = next;
  }
  for (; i < bytes.size(); ++i) {
    crc = (crc >> 8) ^ kTables[0][(crc & 0xFFU) ^ std::to_integer<std::uint32_t>(bytes[i])];
  }
  return crc;
}

}  // namespace

FoldForCrc32 foldForCrc32() noexcept {
#if defined(__x86_64__)
  static const FoldForCrc32 chosen = __builtin_cpu_supports("pclmul") ? foldByMultiplying : nullptr;
  return chosen;
#else
  return nullptr;
#endif
}

std::uint32_t crc32(std::span<const std::byte> bytes, std::uint32_t before) noexcept {
  constexpr std::size_t kPiece = 64;
  std::uint32_t crc = ~before;
  const FoldForCrc32 fold = foldForCrc32();
  if (fold != nullptr && bytes.size() >= kPiece) {
    const std::size_t whole = bytes.size() / kPiece * kPiece;
    const Folded folded = fold(crc, bytes.data(), whole);
    crc = goOn(0, std::as_bytes(std::span(folded.bytes)));
    bytes = bytes.subspan(whole);
  }
  return ~goOn(crc, bytes);
}

}  // namespace cli
