// stats/fast_power.h — a quick approximation of a^p.
#pragma once

namespace varilum {

// Scales the exponent bits of a as one number: with h the upper 32 bits of a as a signed integer,
// the result's upper half is truncate((h - 1072632447) x p + 1072632447), its lower half 0. The
// subtraction wraps; a value outside 32 bits, or NaN, gives -2147483648, so the result is -0.
double fastPower(double a, double p) noexcept;

}  // namespace varilum
