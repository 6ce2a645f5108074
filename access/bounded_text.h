// access/bounded_text.h — copying text into the fixed fields of host records.
#pragma once

#include <cstddef>
#include <string_view>

namespace varilum {

// Cut to what the field holds, always ended with NUL.
template <std::size_t Size>
void copyText(char (&field)[Size], std::string_view text) noexcept {
  field[text.copy(field, Size - 1)] = 0;
}

}  // namespace varilum
