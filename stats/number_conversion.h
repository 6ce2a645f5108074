// stats/number_conversion.h — from floating point and fixed point to whole numbers, always defined.
#pragma once

#include <cstdint>
#include <limits>

namespace varilum {

// Truncates toward zero; NaN gives 0, values out of range the nearest end.
constexpr std::int32_t truncateToInt(double value) noexcept {
  if (!(value > -2147483648.0)) {
    return value != value ? 0 : std::numeric_limits<std::int32_t>::min();
  }
  if (value >= 2147483647.0) return std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(value);
}

// 16.16 fixed point to the nearest whole number.
constexpr std::int32_t roundFixed(std::int32_t fixed) noexcept {
  return static_cast<std::int32_t>((static_cast<std::int64_t>(fixed) + 32768) >> 16);
}

// 16.16 fixed point to floating point.
constexpr double fixedToDouble(std::int32_t fixed) noexcept {
  return fixed * (1.0 / 65536.0);
}

}  // namespace varilum
