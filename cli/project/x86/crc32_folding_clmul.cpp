// cli/project/x86/crc32_folding_clmul.cpp — folding for CRC-32 by multiplication without carry.
//
// Bits are polynomials over two elements, and a checksum is the remainder by x^32 + x^26 + ... + 1.
// What stands n bits before the end may be replaced by its product with x^n modulo that polynomial,
// so four vectors at a time are multiplied down onto the next four. Compiled for processors that
// can do it, so it includes nothing whose inline functions the linker could hand to the rest.
#include <immintrin.h>

#include "cli/project/crc32_folding.h"

namespace cli {
namespace {

// x^power modulo the polynomial, its bits in the checksum's order: the highest power lowest. One
// place further up, since a product of two such numbers comes out one place too low.
constexpr std::uint64_t powerOfX(int power) {
  std::uint32_t value = 0x80000000U;  // x^0
  for (int i = 0; i < power; ++i) value = (value >> 1) ^ ((value & 1U) ? 0xEDB88320U : 0U);
  return std::uint64_t{value} << 1;
}

// Onto data `bits` further on: a vector's first half stands 64 bits before its second. The numbers
// above have 32 bits in the upper half of 64, which takes 32 off the power.
template <int bits>
__m128i fold(__m128i value, __m128i onto) {
  constexpr std::uint64_t kFirst = powerOfX(bits + 32);
  constexpr std::uint64_t kSecond = powerOfX(bits - 32);
  const __m128i factors =
      _mm_set_epi64x(static_cast<long long>(kSecond), static_cast<long long>(kFirst));
  const __m128i first = _mm_clmulepi64_si128(value, factors, 0x00);
  const __m128i second = _mm_clmulepi64_si128(value, factors, 0x11);
  return _mm_xor_si128(_mm_xor_si128(first, second), onto);
}

__m128i load(const std::byte* data) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(data));
}

}  // namespace

Folded foldByMultiplying(std::uint32_t before, const std::byte* data, std::size_t count) {
  __m128i a = _mm_xor_si128(load(data), _mm_cvtsi32_si128(static_cast<int>(before)));
  __m128i b = load(data + 16);
  __m128i c = load(data + 32);
  __m128i d = load(data + 48);
  for (std::size_t i = 64; i < count; i += 64) {
    a = fold<512>(a, load(data + i));
    b = fold<512>(b, load(data + i + 16));
    c = fold<512>(c, load(data + i + 32));
    d = fold<512>(d, load(data + i + 48));
  }
  Folded folded;
  _mm_storeu_si128(reinterpret_cast<__m128i*>(folded.bytes),
                   fold<128>(fold<128>(fold<128>(a, b), c), d));
  return folded;
}

}  // namespace cli
