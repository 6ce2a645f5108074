// ui/panel_text.h — one line of text in the panel: its numbers put in, and made UTF-16.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace varilum {

// Numbers of the panel's texts in the string table.
inline constexpr std::uint32_t kTextInputLevel = 33;
inline constexpr std::uint32_t kTextDesiredLevel = 34;
inline constexpr std::uint32_t kTextInputAndSpread = 36;
inline constexpr std::uint32_t kTextDesiredAndSpread = 37;
inline constexpr std::uint32_t kTextEmptyRectangle = 40;
inline constexpr std::uint32_t kTextRedClipped = 41;
inline constexpr std::uint32_t kTextGreenClipped = 42;
inline constexpr std::uint32_t kTextBlueClipped = 43;
inline constexpr std::uint32_t kTextLuminanceGraph = 44;
inline constexpr std::uint32_t kTextTimeInFrames = 45;
inline constexpr std::uint32_t kTextInputVariance = 46;
inline constexpr std::uint32_t kTextHistogramGraph = 50;
inline constexpr std::uint32_t kTextHistogramGraphInput = 51;
inline constexpr std::uint32_t kTextPassedOver = 52;
inline constexpr std::uint32_t kTextCalculating = 53;

inline constexpr std::size_t kLineLength = 100;  // longest text drawn

// A format of the C library with its values, cut to what is ever drawn.
class FormattedLine {
 public:
  template <class... Values>
  explicit FormattedLine(const char* format, Values... values) noexcept {
    std::snprintf(text_, sizeof text_, format, values...);
  }

  const char* text() const noexcept { return text_; }
  int length() const noexcept { return static_cast<int>(std::strlen(text_)); }

 private:
  char text_[kLineLength + 1];
};

// The first kLineLength characters of a text of the current locale, in UTF-16, ended with NUL.
class WideLine {
 public:
  explicit WideLine(const char* text) noexcept;

  // False when the text is not one of the locale.
  bool valid() const noexcept { return valid_; }
  const std::uint16_t* units() const noexcept { return units_; }

 private:
  bool valid_ = false;
  std::uint16_t units_[kLineLength + 1] = {};
};

}  // namespace varilum
