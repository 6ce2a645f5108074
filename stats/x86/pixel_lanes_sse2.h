// stats/x86/pixel_lanes_sse2.h — the four channels of a deep pixel in one register.
#pragma once

#include <emmintrin.h>

#include <cstdint>
#include <cstring>

#include "hostapi/world.h"

namespace varilum {

// The same as PlainLanes, bit for bit, on every x86-64 processor. Alpha is carried along and
// replaced at the end.
struct Sse2Lanes {
  __m128 value;

  static Sse2Lanes load(const PF_Pixel16& pixel) noexcept {
    const __m128i levels = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(&pixel));
    return {_mm_cvtepi32_ps(_mm_unpacklo_epi16(levels, _mm_setzero_si128()))};
  }
  static Sse2Lanes load(const PF_PixelFloat& pixel) noexcept {
    return {_mm_loadu_ps(&pixel.alpha)};
  }

  Sse2Lanes times(float factor) const noexcept { return {_mm_mul_ps(value, _mm_set1_ps(factor))}; }
  Sse2Lanes minus(float offset) const noexcept { return {_mm_sub_ps(value, _mm_set1_ps(offset))}; }
  Sse2Lanes plus(float offset) const noexcept { return {_mm_add_ps(value, _mm_set1_ps(offset))}; }

  Sse2Lanes raised(double power, double white) const noexcept {
    const __m128d share = _mm_set1_pd(1.0 / white);
    const auto shares = [share](__m128 two) {
      return _mm_add_pd(_mm_mul_pd(_mm_cvtps_pd(two), share), _mm_setzero_pd());
    };
    const __m128d low = shares(value);
    const __m128d high = shares(_mm_movehl_ps(value, value));
    const __m128 upper = _mm_shuffle_ps(_mm_castpd_ps(low), _mm_castpd_ps(high), 0xDD);
    const __m128i distance = _mm_sub_epi32(_mm_castps_si128(upper), _mm_set1_epi32(kOne));
    // The conversion gives what the rule asks for where a number does not fit: the lowest one.
    const auto scale = [power](__m128i two) {
      const __m128d scaled = _mm_mul_pd(_mm_cvtepi32_pd(two), _mm_set1_pd(power));
      return _mm_cvttpd_epi32(_mm_add_pd(scaled, _mm_set1_pd(kOne)));
    };
    const auto result = [white](__m128i upperHalves) {
      const __m128i bits = _mm_unpacklo_epi32(_mm_setzero_si128(), upperHalves);
      return _mm_cvtpd_ps(_mm_mul_pd(_mm_castsi128_pd(bits), _mm_set1_pd(white)));
    };
    return {_mm_movelh_ps(result(scale(distance)),
                          result(scale(_mm_unpackhi_epi64(distance, distance))))};
  }

  void store(std::uint16_t alpha, PF_Pixel16& out) const noexcept {
    const __m128i whole = _mm_cvttps_epi32(clamped());
    const __m128i levels = _mm_insert_epi16(_mm_packs_epi32(whole, whole), alpha, 0);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(&out), levels);
  }
  void store(const float& alpha, PF_PixelFloat& out) const noexcept {
    _mm_storeu_ps(&out.alpha, _mm_move_ss(clamped(), _mm_load_ss(&alpha)));
  }

 private:
  static constexpr int kOne = 1072632447;  // as in fastPower

  // In this order of operands, what is no number becomes 0.
  __m128 clamped() const noexcept {
    return _mm_min_ps(_mm_max_ps(value, _mm_setzero_ps()), _mm_set1_ps(32767.0f));
  }
};

}  // namespace varilum
