// media/x86/yuv_kernels_avx2.cpp — the YUV kernels on vectors of 32 bytes.
//
// Compiled for processors that have them, so it includes nothing whose inline functions the linker
// could hand to the rest of the program. Sums go in the plain way's order and nothing is fused, so
// that every bit is the same.
#include <immintrin.h>

#include <cstddef>
#include <cstring>

#include "media/yuv_kernels.h"

namespace media {
namespace {

constexpr int kBlock = 16;  // pixels converted at once

__m256 floats(__m256i whole) {
  return _mm256_cvtepi32_ps(whole);
}

__m256i rounded(__m256 level) {
  return _mm256_cvttps_epi32(_mm256_add_ps(level, _mm256_set1_ps(0.5F)));
}

__m256 times(float factor, __m256 value) {
  return _mm256_mul_ps(_mm256_set1_ps(factor), value);
}

// Bytes, and pixels of four bytes.
struct Narrow {
  static constexpr std::ptrdiff_t kCode = 1;
  static constexpr std::ptrdiff_t kPixel = 4;

  static __m256 load(const std::uint8_t* codes, __m256i) {
    return floats(_mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(codes))));
  }

  // Sixteen code values; `maximum` is 255, at which packing stops by itself.
  static void store(std::uint8_t* codes, __m256i first, __m256i second, __m256i) {
    const __m256i words = _mm256_permute4x64_epi64(_mm256_packs_epi32(first, second), 0xD8);
    const __m128i bytes =
        _mm_packus_epi16(_mm256_castsi256_si128(words), _mm256_extracti128_si256(words, 1));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(codes), bytes);
  }

  static void storeEight(std::uint8_t* codes, __m256i values, __m256i) {
    const __m256i words = _mm256_packs_epi32(values, values);
    const __m256i bytes = _mm256_packus_epi16(words, words);
    const int low = _mm256_extract_epi32(bytes, 0);
    const int high = _mm256_extract_epi32(bytes, 4);
    std::memcpy(codes, &low, 4);
    std::memcpy(codes + 4, &high, 4);
  }

  // Eight pixels of rounded levels, which packing clips to 0..255.
  static void storePixels(std::uint8_t* argb, __m256i red, __m256i green, __m256i blue) {
    const __m256i alphaRed = _mm256_packs_epi32(_mm256_set1_epi32(255), red);
    const __m256i greenBlue = _mm256_packs_epi32(green, blue);
    const __m256i order = _mm256_setr_epi8(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15, 0,
                                           4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15);
    const __m256i pixels = _mm256_shuffle_epi8(_mm256_packus_epi16(alphaRed, greenBlue), order);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(argb), pixels);
  }

  static void loadPixels(const std::uint8_t* argb, __m256 (&levels)[3]) {
    const __m256i pixels = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(argb));
    const __m256i byte = _mm256_set1_epi32(255);
    levels[0] = floats(_mm256_and_si256(_mm256_srli_epi32(pixels, 8), byte));
    levels[1] = floats(_mm256_and_si256(_mm256_srli_epi32(pixels, 16), byte));
    levels[2] = floats(_mm256_srli_epi32(pixels, 24));
  }
};

// Words of 16 bits, and pixels of eight bytes with white at 32768.
struct Wide {
  static constexpr std::ptrdiff_t kCode = 2;
  static constexpr std::ptrdiff_t kPixel = 8;

  static __m256 load(const std::uint8_t* codes, __m256i maximum) {
    const __m128i words = _mm_loadu_si128(reinterpret_cast<const __m128i*>(codes));
    return floats(_mm256_and_si256(_mm256_cvtepu16_epi32(words), maximum));
  }

  static void store(std::uint8_t* codes, __m256i first, __m256i second, __m256i maximum) {
    const __m256i words =
        _mm256_packus_epi32(_mm256_min_epi32(first, maximum), _mm256_min_epi32(second, maximum));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(codes), _mm256_permute4x64_epi64(words, 0xD8));
  }

  static void storeEight(std::uint8_t* codes, __m256i values, __m256i maximum) {
    const __m256i clipped = _mm256_min_epi32(values, maximum);
    const __m256i words = _mm256_permute4x64_epi64(_mm256_packus_epi32(clipped, clipped), 0xD8);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(codes), _mm256_castsi256_si128(words));
  }

  static __m256i clipped(__m256i level) {
    return _mm256_min_epi32(_mm256_max_epi32(level, _mm256_setzero_si256()),
                            _mm256_set1_epi32(32768));
  }

  static void storePixels(std::uint8_t* argb, __m256i red, __m256i green, __m256i blue) {
    const __m256i alphaRed =
        _mm256_or_si256(_mm256_set1_epi32(32768), _mm256_slli_epi32(clipped(red), 16));
    const __m256i greenBlue = _mm256_or_si256(clipped(green), _mm256_slli_epi32(clipped(blue), 16));
    const __m256i even = _mm256_unpacklo_epi32(alphaRed, greenBlue);  // pixels 0 1 4 5
    const __m256i odd = _mm256_unpackhi_epi32(alphaRed, greenBlue);   // pixels 2 3 6 7
    auto* out = reinterpret_cast<__m256i*>(argb);
    _mm256_storeu_si256(out, _mm256_permute2x128_si256(even, odd, 0x20));
    _mm256_storeu_si256(out + 1, _mm256_permute2x128_si256(even, odd, 0x31));
  }

  static void loadPixels(const std::uint8_t* argb, __m256 (&levels)[3]) {
    const auto* in = reinterpret_cast<const __m256i*>(argb);
    const __m256i first = _mm256_loadu_si256(in);
    const __m256i second = _mm256_loadu_si256(in + 1);
    const __m256 even = _mm256_castsi256_ps(_mm256_permute2x128_si256(first, second, 0x20));
    const __m256 odd = _mm256_castsi256_ps(_mm256_permute2x128_si256(first, second, 0x31));
    const __m256i alphaRed = _mm256_castps_si256(_mm256_shuffle_ps(even, odd, 0x88));
    const __m256i greenBlue = _mm256_castps_si256(_mm256_shuffle_ps(even, odd, 0xDD));
    levels[0] = floats(_mm256_srli_epi32(alphaRed, 16));
    levels[1] = floats(_mm256_and_si256(greenBlue, _mm256_set1_epi32(0xFFFF)));
    levels[2] = floats(_mm256_srli_epi32(greenBlue, 16));
  }
};

// Each of eight values twice: `half` 0 gives the first eight of the sixteen.
template <int half>
__m256 doubled(__m256 values) {
  const __m256i order = half == 0 ? _mm256_setr_epi32(0, 0, 1, 1, 2, 2, 3, 3)
                                  : _mm256_setr_epi32(4, 4, 5, 5, 6, 6, 7, 7);
  return _mm256_permutevar8x32_ps(values, order);
}

// What the chroma of eight pixels adds to their levels.
struct ChromaTerms {
  __m256 redCr;
  __m256 greenCb;
  __m256 greenCr;
  __m256 blueCb;
};

ChromaTerms chromaTerms(__m256 cb, __m256 cr, const YuvMap& map) {
  return {times(map.matrix[0][2], cr), times(map.matrix[1][1], cb), times(map.matrix[1][2], cr),
          times(map.matrix[2][1], cb)};
}

template <int half>
ChromaTerms doubled(const ChromaTerms& terms) {
  return {doubled<half>(terms.redCr), doubled<half>(terms.greenCb), doubled<half>(terms.greenCr),
          doubled<half>(terms.blueCb)};
}

template <class Format>
void eightToArgb(__m256 luma, const ChromaTerms& terms, const YuvMap& map, std::uint8_t* argb) {
  const __m256 grey = times(map.matrix[0][0], luma);
  const auto level = [&](__m256 sum, int i) {
    return rounded(_mm256_add_ps(sum, _mm256_set1_ps(map.offset[i])));
  };
  const __m256 green = _mm256_add_ps(_mm256_add_ps(grey, terms.greenCb), terms.greenCr);
  Format::storePixels(argb, level(_mm256_add_ps(grey, terms.redCr), 0), level(green, 1),
                      level(_mm256_add_ps(grey, terms.blueCb), 2));
}

template <class Format, int shift>
void blockToArgb(const std::uint8_t* luma, const std::uint8_t* cb, const std::uint8_t* cr,
                 __m256i maximum, const YuvMap& map, std::uint8_t* argb) {
  constexpr std::ptrdiff_t kHalf = 8 * Format::kCode;
  const __m256 luma0 = Format::load(luma, maximum);
  const __m256 luma1 = Format::load(luma + kHalf, maximum);
  const ChromaTerms terms = chromaTerms(Format::load(cb, maximum), Format::load(cr, maximum), map);
  if constexpr (shift == 1) {
    eightToArgb<Format>(luma0, doubled<0>(terms), map, argb);
    eightToArgb<Format>(luma1, doubled<1>(terms), map, argb + 8 * Format::kPixel);
  } else {
    eightToArgb<Format>(luma0, terms, map, argb);
    const ChromaTerms next =
        chromaTerms(Format::load(cb + kHalf, maximum), Format::load(cr + kHalf, maximum), map);
    eightToArgb<Format>(luma1, next, map, argb + 8 * Format::kPixel);
  }
}

template <class Format, int shift>
void toArgb(const YuvRow& row, const YuvMap& map, int width, void* argb) {
  const __m256i maximum = _mm256_set1_epi32(row.maximum);
  auto* out = static_cast<std::uint8_t*>(argb);
  const std::ptrdiff_t whole = width / kBlock * kBlock;
  for (std::ptrdiff_t x = 0; x < whole; x += kBlock) {
    const std::ptrdiff_t chroma = (x >> shift) * Format::kCode;
    blockToArgb<Format, shift>(row.luma + x * Format::kCode, row.cb + chroma, row.cr + chroma,
                               maximum, map, out + x * Format::kPixel);
  }
  const std::ptrdiff_t rest = width - whole;
  if (rest == 0) return;
  std::uint8_t codes[3][kBlock * Format::kCode] = {};
  std::uint8_t pixels[kBlock * Format::kPixel];
  const std::ptrdiff_t chroma = (whole >> shift) * Format::kCode;
  const auto chromaBytes = static_cast<std::size_t>(((rest + shift) >> shift) * Format::kCode);
  std::memcpy(codes[0], row.luma + whole * Format::kCode,
              static_cast<std::size_t>(rest * Format::kCode));
  std::memcpy(codes[1], row.cb + chroma, chromaBytes);
  std::memcpy(codes[2], row.cr + chroma, chromaBytes);
  blockToArgb<Format, shift>(codes[0], codes[1], codes[2], maximum, map, pixels);
  std::memcpy(out + whole * Format::kPixel, pixels,
              static_cast<std::size_t>(rest * Format::kPixel));
}

// Code values, not yet rounded, of eight pixels.
struct EightCodes {
  __m256 luma;
  __m256 cb;
  __m256 cr;
};

template <class Format>
EightCodes codesOf(const std::uint8_t* argb, const YuvMap& map) {
  __m256 levels[3];
  Format::loadPixels(argb, levels);
  const auto code = [&](int i) {
    const float* const m = map.matrix[i];
    const __m256 sum = _mm256_add_ps(_mm256_add_ps(times(m[0], levels[0]), times(m[1], levels[1])),
                                     times(m[2], levels[2]));
    return _mm256_add_ps(sum, _mm256_set1_ps(map.offset[i]));
  };
  return {code(0), code(1), code(2)};
}

// Sums of neighbours among sixteen values.
__m256 pairSums(__m256 first, __m256 second) {
  const __m256d sums = _mm256_castps_pd(_mm256_hadd_ps(first, second));
  return _mm256_castpd_ps(_mm256_permute4x64_pd(sums, 0xD8));
}

template <class Format, int shift, bool twoRows>
void blockFromArgb(const std::uint8_t* upper, const std::uint8_t* lower, const YuvMap& map,
                   __m256i maximum, const MutableYuvRow& to) {
  constexpr std::ptrdiff_t kHalf = 8 * Format::kPixel;
  EightCodes first = codesOf<Format>(upper, map);
  EightCodes second = codesOf<Format>(upper + kHalf, map);
  Format::store(to.luma, rounded(first.luma), rounded(second.luma), maximum);
  if constexpr (twoRows) {
    const EightCodes below = codesOf<Format>(lower, map);
    const EightCodes belowSecond = codesOf<Format>(lower + kHalf, map);
    Format::store(to.lower, rounded(below.luma), rounded(belowSecond.luma), maximum);
    first.cb = _mm256_add_ps(first.cb, below.cb);
    first.cr = _mm256_add_ps(first.cr, below.cr);
    second.cb = _mm256_add_ps(second.cb, belowSecond.cb);
    second.cr = _mm256_add_ps(second.cr, belowSecond.cr);
  }
  if constexpr (shift == 1) {
    constexpr float kShare = twoRows ? 0.25F : 0.5F;
    Format::storeEight(to.cb, rounded(times(kShare, pairSums(first.cb, second.cb))), maximum);
    Format::storeEight(to.cr, rounded(times(kShare, pairSums(first.cr, second.cr))), maximum);
  } else {
    Format::store(to.cb, rounded(first.cb), rounded(second.cb), maximum);
    Format::store(to.cr, rounded(first.cr), rounded(second.cr), maximum);
  }
}

// The last pixels of a row, and their last one again so that it is its own neighbour.
template <class Format>
void copyRest(const void* row, std::ptrdiff_t whole, std::ptrdiff_t rest, std::uint8_t* pixels) {
  const auto* from = static_cast<const std::uint8_t*>(row) + whole * Format::kPixel;
  const auto bytes = static_cast<std::size_t>(rest * Format::kPixel);
  std::memcpy(pixels, from, bytes);
  std::memcpy(pixels + bytes, from + bytes - Format::kPixel, Format::kPixel);
}

template <class Format, int shift, bool twoRows>
void fromArgb(const void* upper, const void* lower, const YuvMap& map, int width,
              const MutableYuvRow& row) {
  const __m256i maximum = _mm256_set1_epi32(row.maximum);
  const auto* above = static_cast<const std::uint8_t*>(upper);
  const auto* below = static_cast<const std::uint8_t*>(lower);
  const auto at = [&row](std::ptrdiff_t x) {
    const std::ptrdiff_t chroma = (x >> shift) * Format::kCode;
    return MutableYuvRow{row.luma + x * Format::kCode,
                         twoRows ? row.lower + x * Format::kCode : nullptr, row.cb + chroma,
                         row.cr + chroma, row.maximum};
  };
  const std::ptrdiff_t whole = width / kBlock * kBlock;
  for (std::ptrdiff_t x = 0; x < whole; x += kBlock) {
    blockFromArgb<Format, shift, twoRows>(above + x * Format::kPixel,
                                          twoRows ? below + x * Format::kPixel : nullptr, map,
                                          maximum, at(x));
  }
  const std::ptrdiff_t rest = width - whole;
  if (rest == 0) return;
  std::uint8_t pixels[2][kBlock * Format::kPixel] = {};
  std::uint8_t codes[4][kBlock * Format::kCode];
  copyRest<Format>(upper, whole, rest, pixels[0]);
  if constexpr (twoRows) copyRest<Format>(lower, whole, rest, pixels[1]);
  blockFromArgb<Format, shift, twoRows>(pixels[0], pixels[1], map, maximum,
                                        {codes[0], codes[1], codes[2], codes[3], row.maximum});
  const MutableYuvRow last = at(whole);
  const auto lumaBytes = static_cast<std::size_t>(rest * Format::kCode);
  const auto chromaBytes = static_cast<std::size_t>(((rest + shift) >> shift) * Format::kCode);
  std::memcpy(last.luma, codes[0], lumaBytes);
  if constexpr (twoRows) std::memcpy(last.lower, codes[1], lumaBytes);
  std::memcpy(last.cb, codes[2], chromaBytes);
  std::memcpy(last.cr, codes[3], chromaBytes);
}

}  // namespace

const YuvKernels kYuvKernelsAvx2{
    "AVX2",
    {{toArgb<Narrow, 0>, toArgb<Narrow, 1>}, {toArgb<Wide, 0>, toArgb<Wide, 1>}},
    {{fromArgb<Narrow, 0, false>, fromArgb<Narrow, 1, false>},
     {fromArgb<Wide, 0, false>, fromArgb<Wide, 1, false>}},
    {fromArgb<Narrow, 1, true>, fromArgb<Wide, 1, true>}};

}  // namespace media
