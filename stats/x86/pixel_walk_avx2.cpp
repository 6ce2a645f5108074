// stats/x86/pixel_walk_avx2.cpp — the walk's kernels on vectors of 32 bytes.
//
// Compiled for processors that have them, so it includes nothing whose inline functions the linker
// could hand to the rest of the library.
#include <immintrin.h>

#include "stats/pixel_walk_kernels.h"

namespace varilum {
namespace {

__m128i load(const std::byte* at) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
}

// Two stretches of 16 bytes side by side, so that packing, which works by halves, keeps the order.
__m256i load(const std::byte* low, const std::byte* high) {
  return _mm256_inserti128_si256(_mm256_castsi128_si256(load(low)), load(high), 1);
}

void store(void* at, __m256i value) {
  _mm256_storeu_si256(static_cast<__m256i*>(at), value);
}

__m256i factors(int low, int high) {
  return _mm256_set1_epi32(high << 16 | low);
}

void pairAvx2(const std::byte* pixels, int count, WalkPairs& pairs) {
  for (int i = 0; i < count; i += kWalkBlock, pixels += 4 * kWalkBlock) {
    const __m256i first = load(pixels, pixels + 32);
    const __m256i second = load(pixels + 16, pixels + 48);
    // Red and blue in the halves of a word; alpha and green likewise.
    const __m256i redBlue0 = _mm256_srli_epi16(first, 8);
    const __m256i redBlue1 = _mm256_srli_epi16(second, 8);
    const __m256i even = factors(255, 255);
    const __m256i green0 = _mm256_and_si256(first, even);
    const __m256i green1 = _mm256_and_si256(second, even);
    const auto hundredths = [](__m256i redBlue, __m256i green) {
      const __m256i sum = _mm256_add_epi32(_mm256_madd_epi16(redBlue, factors(30, 11)),
                                           _mm256_madd_epi16(green, factors(0, 59)));
      return _mm256_add_epi32(sum, _mm256_set1_epi32(50));
    };
    const __m256i sums =
        _mm256_packs_epi32(hundredths(redBlue0, green0), hundredths(redBlue1, green1));
    // A hundredth as 5243 / 2^19: exact for whole numbers below 43 699.
    const __m256i levels = _mm256_srli_epi16(_mm256_mulhi_epu16(sums, _mm256_set1_epi16(5243)), 3);
    const __m256i base = _mm256_packs_epi32(_mm256_madd_epi16(green0, factors(0, kGreenStride)),
                                            _mm256_madd_epi16(green1, factors(0, kGreenStride)));
    store(pairs.greenLuminance + i, _mm256_add_epi16(base, levels));
    store(pairs.redBlue + i, _mm256_packus_epi32(_mm256_madd_epi16(redBlue0, factors(256, 1)),
                                                 _mm256_madd_epi16(redBlue1, factors(256, 1))));
    const __m256i ties =
        _mm256_cmpeq_epi16(_mm256_mullo_epi16(levels, _mm256_set1_epi16(100)), sums);
    pairs.ties[i / kWalkBlock] = static_cast<std::uint16_t>(_mm_movemask_epi8(
        _mm_packs_epi16(_mm256_castsi256_si128(ties), _mm256_extracti128_si256(ties, 1))));
  }
}

void read16(const std::byte* pixels, int count, LevelWord* words) {
  const auto levels = [](__m256i channels) {
    return _mm256_and_si256(_mm256_srli_epi16(channels, 7), _mm256_set1_epi16(255));
  };
  for (int i = 0; i < count; i += 8, pixels += 64) {
    store(words + i, _mm256_packus_epi16(levels(load(pixels, pixels + 32)),
                                         levels(load(pixels + 16, pixels + 48))));
  }
}

// The conversion gives 0x80000000, whose low byte is 0, where a number does not fit.
__m128i floatLevels(const std::byte* pixel) {
  const __m256d channels = _mm256_cvtps_pd(_mm_loadu_ps(reinterpret_cast<const float*>(pixel)));
  const __m128i all = _mm256_cvttpd_epi32(_mm256_mul_pd(channels, _mm256_set1_pd(255.0)));
  return _mm_and_si128(all, _mm_set1_epi32(255));
}

void readFloat(const std::byte* pixels, int count, LevelWord* words) {
  for (int i = 0; i < count; i += 4, pixels += 64) {
    const __m128i low = _mm_packs_epi32(floatLevels(pixels), floatLevels(pixels + 16));
    const __m128i high = _mm_packs_epi32(floatLevels(pixels + 32), floatLevels(pixels + 48));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(words + i), _mm_packus_epi16(low, high));
  }
}

}  // namespace

const WalkKernels kAvx2Walk = {"avx2", pairAvx2, read16, readFloat};

}  // namespace varilum
