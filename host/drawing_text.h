// host/drawing_text.h — texts as effects pass them, in 16-bit units.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace host {

// UTF-8 of the units up to the NUL, or up to `longest` of them. Halves of surrogate pairs that
// stand alone become U+FFFD.
std::string fromUtf16(const std::uint16_t* text, std::size_t longest);

}  // namespace host
