// tests/stats/special_values.h — doubles that are no ordinary numbers.
#pragma once

#include <limits>

namespace varilum::test {

inline constexpr double kInfinity = std::numeric_limits<double>::infinity();
inline constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

}  // namespace varilum::test
