// plugin/luminance_text.h — a Luminance value as text, as keyframes are copied and pasted.
#pragma once

#include <cstddef>
#include <cstdint>

namespace varilum {

// Left-aligned, at least six characters, two decimals, NUL. False, with the buffer untouched, when
// it does not fit.
bool printLuminance(double luminance, char* buffer, std::size_t size) noexcept;

enum class LuminanceText : std::uint8_t { number, nothing, notNumber };

// The number at the start of a text that ends at a tab, carriage return or NUL, and at most 256
// characters on; blanks around it do not count. Null is like an empty text.
LuminanceText scanLuminance(const char* text, double& luminance) noexcept;

}  // namespace varilum
