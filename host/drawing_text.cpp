// host/drawing_text.cpp — texts as effects pass them, in 16-bit units.
#include "host/drawing_text.h"

namespace host {
namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

constexpr bool isHigh(std::uint32_t unit) noexcept {
  return (unit & 0xFC00U) == 0xD800U;
}
constexpr bool isLow(std::uint32_t unit) noexcept {
  return (unit & 0xFC00U) == 0xDC00U;
}

void append(std::string& text, std::uint32_t point) {
  const auto put = [&](std::uint32_t byte) { text += static_cast<char>(byte); };
  const auto tail = [&](int shift) { put(0x80U | ((point >> shift) & 0x3FU)); };
  if (point < 0x80U) {
    put(point);
  } else if (point < 0x800U) {
    put(0xC0U | (point >> 6));
    tail(0);
  } else if (point < 0x10000U) {
    put(0xE0U | (point >> 12));
    tail(6);
    tail(0);
  } else {
    put(0xF0U | (point >> 18));
    tail(12);
    tail(6);
    tail(0);
  }
}

}  // namespace

std::string fromUtf16(const std::uint16_t* text, std::size_t longest) {
  std::string result;
  for (std::size_t i = 0; i < longest && text[i] != 0; ++i) {
    std::uint32_t point = text[i];
    if (isHigh(point) && i + 1 < longest && isLow(text[i + 1])) {
      point = 0x10000U + ((point & 0x3FFU) << 10) + (text[++i] & 0x3FFU);
    } else if (isHigh(point) || isLow(point)) {
      point = kReplacement;
    }
    append(result, point);
  }
  return result;
}

}  // namespace host
