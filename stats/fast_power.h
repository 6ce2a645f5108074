// stats/fast_power.h — a quick approximation of a^p.
#pragma once

#include <bit>
#include <cstdint>
#include <limits>

namespace varilum {

// Scales the exponent bits of a as one number: with h the upper 32 bits of a as a signed integer,
// the result's upper half is truncate((h - 1072632447) x p + 1072632447), its lower half 0. The
// subtraction wraps; a value outside 32 bits, or NaN, gives -2147483648, so the result is -0.
inline double fastPower(double a, double p) noexcept {
  constexpr std::uint32_t kOne = 1072632447;  // upper half of a double just below 1
  const auto upper = static_cast<std::uint32_t>(std::bit_cast<std::uint64_t>(a) >> 32);
  const auto distance = static_cast<std::int32_t>(upper - kOne);
  const double scaled = distance * p + double{kOne};
  const std::int32_t result = scaled > -2147483649.0 && scaled < 2147483648.0
                                  ? static_cast<std::int32_t>(scaled)
                                  : std::numeric_limits<std::int32_t>::min();
  return std::bit_cast<double>(std::uint64_t{static_cast<std::uint32_t>(result)} << 32);
}

}  // namespace varilum
