// plugin/luminance_text.cpp — a Luminance value as text, as keyframes are copied and pasted.
#include "plugin/luminance_text.h"

#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace varilum {
namespace {

constexpr std::size_t kLongestPrint = 512;  // the largest double takes 312
constexpr std::size_t kLongestToken = 256;

bool isSpace(char c) noexcept {
  return std::isspace(static_cast<unsigned char>(c)) != 0;
}

bool startsNumber(std::string_view token) noexcept {
  if (token.empty()) return false;
  const char c = token.front();
  return (c >= '0' && c <= '9') || c == '.' || c == '-';
}

std::string_view firstToken(const char* text) noexcept {
  std::size_t length = 0;
  while (length < kLongestToken && text[length] != '\t' && text[length] != '\r' &&
         text[length] != '\0') {
    ++length;
  }
  std::string_view token{text, length};
  while (!token.empty() && isSpace(token.front())) token.remove_prefix(1);
  while (!token.empty() && token.back() == ' ') token.remove_suffix(1);
  return token;
}

}  // namespace

bool printLuminance(double luminance, char* buffer, std::size_t size) noexcept {
  char text[kLongestPrint];
  const int length = std::snprintf(text, sizeof text, "%-6.2f", luminance);
  if (length < 0 || static_cast<std::size_t>(length) >= size) return false;
  std::memcpy(buffer, text, static_cast<std::size_t>(length) + 1);
  return true;
}

LuminanceText scanLuminance(const char* text, double& luminance) noexcept {
  if (text == nullptr || *text == '\r' || *text == '\0') return LuminanceText::nothing;
  const std::string_view token = firstToken(text);
  if (!startsNumber(token)) return LuminanceText::notNumber;
  char digits[kLongestToken + 1];
  digits[token.copy(digits, kLongestToken)] = 0;
  errno = 0;
  const double value = std::strtod(digits, nullptr);
  if (!std::isfinite(value)) return LuminanceText::notNumber;
  luminance = value;
  return LuminanceText::number;
}

}  // namespace varilum
