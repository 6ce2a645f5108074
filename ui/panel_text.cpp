// ui/panel_text.cpp — one line of text in the panel: its numbers put in, and made UTF-16.
#include "ui/panel_text.h"

#include <cwchar>

namespace varilum {

WideLine::WideLine(const char* text) noexcept {
  std::size_t left = std::strlen(text);
  std::mbstate_t state{};
  std::size_t used = 0;
  while (left > 0 && used < kLineLength) {
    wchar_t wide = 0;
    const std::size_t bytes = std::mbrtowc(&wide, text, left, &state);
    if (bytes == 0 || bytes > left) {
      units_[0] = 0;
      return;
    }
    text += bytes;
    left -= bytes;
    const auto code = static_cast<std::uint32_t>(wide);
    if (code <= 0xFFFF) {
      units_[used++] = static_cast<std::uint16_t>(code);
    } else if (used + 2 <= kLineLength) {  // where wide characters are not UTF-16 already
      units_[used++] = static_cast<std::uint16_t>(0xD800 + ((code - 0x10000) >> 10));
      units_[used++] = static_cast<std::uint16_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
    } else {
      break;
    }
  }
  units_[used] = 0;
  valid_ = true;
}

}  // namespace varilum
