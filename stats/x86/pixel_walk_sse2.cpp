// stats/x86/pixel_walk_sse2.cpp — the walk's kernels on vectors of 16 bytes.
#include <emmintrin.h>

#include "stats/pixel_walk_kernels.h"

namespace varilum {
namespace {

__m128i load(const std::byte* at) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
}

void store(void* at, __m128i value) {
  _mm_storeu_si128(static_cast<__m128i*>(at), value);
}

__m128i factors(int low, int high) {
  return _mm_set1_epi32(high << 16 | low);
}

// Pairs of eight pixels, put where at says; returns the mask of their ties.
__m128i pairEight(const std::byte* pixels, WalkPairs& pairs, int at) {
  const __m128i first = load(pixels);
  const __m128i second = load(pixels + 16);
  // Red and blue in the halves of a word; alpha and green likewise.
  const __m128i redBlue0 = _mm_srli_epi16(first, 8);
  const __m128i redBlue1 = _mm_srli_epi16(second, 8);
  const __m128i even = factors(255, 255);
  const __m128i green0 = _mm_and_si128(first, even);
  const __m128i green1 = _mm_and_si128(second, even);
  const auto hundredths = [](__m128i redBlue, __m128i green) {
    const __m128i sum = _mm_add_epi32(_mm_madd_epi16(redBlue, factors(30, 11)),
                                      _mm_madd_epi16(green, factors(0, 59)));
    return _mm_add_epi32(sum, _mm_set1_epi32(50));
  };
  const __m128i sums = _mm_packs_epi32(hundredths(redBlue0, green0), hundredths(redBlue1, green1));
  // A hundredth as 5243 / 2^19: exact for whole numbers below 43 699.
  const __m128i levels = _mm_srli_epi16(_mm_mulhi_epu16(sums, _mm_set1_epi16(5243)), 3);
  const __m128i base = _mm_packs_epi32(_mm_madd_epi16(green0, factors(0, kGreenStride)),
                                       _mm_madd_epi16(green1, factors(0, kGreenStride)));
  store(pairs.greenLuminance + at, _mm_add_epi16(base, levels));
  // Packing takes numbers with a sign: the upper bits are filled with bit 15, and so nothing clips.
  const auto joined = [](__m128i both) {
    return _mm_srai_epi32(_mm_slli_epi32(_mm_madd_epi16(both, factors(256, 1)), 16), 16);
  };
  store(pairs.redBlue + at, _mm_packs_epi32(joined(redBlue0), joined(redBlue1)));
  return _mm_cmpeq_epi16(_mm_mullo_epi16(levels, _mm_set1_epi16(100)), sums);
}

void pairSse2(const std::byte* pixels, int count, WalkPairs& pairs) {
  for (int i = 0; i < count; i += kWalkBlock, pixels += 4 * kWalkBlock) {
    const __m128i low = pairEight(pixels, pairs, i);
    const __m128i high = pairEight(pixels + 32, pairs, i + 8);
    pairs.ties[i / kWalkBlock] =
        static_cast<std::uint16_t>(_mm_movemask_epi8(_mm_packs_epi16(low, high)));
  }
}

void read16(const std::byte* pixels, int count, LevelWord* words) {
  const auto levels = [](__m128i channels) {
    return _mm_and_si128(_mm_srli_epi16(channels, 7), _mm_set1_epi16(255));
  };
  for (int i = 0; i < count; i += 4, pixels += 32) {
    store(words + i, _mm_packus_epi16(levels(load(pixels)), levels(load(pixels + 16))));
  }
}

// The conversion gives 0x80000000, whose low byte is 0, where a number does not fit.
__m128i floatLevels(const std::byte* pixel) {
  const __m128 channels = _mm_loadu_ps(reinterpret_cast<const float*>(pixel));
  const auto whole = [](__m128 two) {
    return _mm_cvttpd_epi32(_mm_mul_pd(_mm_cvtps_pd(two), _mm_set1_pd(255.0)));
  };
  const __m128i all = _mm_unpacklo_epi64(whole(channels), whole(_mm_movehl_ps(channels, channels)));
  return _mm_and_si128(all, _mm_set1_epi32(255));
}

void readFloat(const std::byte* pixels, int count, LevelWord* words) {
  for (int i = 0; i < count; i += 4, pixels += 64) {
    const __m128i low = _mm_packs_epi32(floatLevels(pixels), floatLevels(pixels + 16));
    const __m128i high = _mm_packs_epi32(floatLevels(pixels + 32), floatLevels(pixels + 48));
    store(words + i, _mm_packus_epi16(low, high));
  }
}

}  // namespace

const WalkKernels kSse2Walk = {"sse2", pairSse2, read16, readFloat};

}  // namespace varilum
