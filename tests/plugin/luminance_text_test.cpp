// tests/plugin/luminance_text_test.cpp — Luminance values as text.
#include "plugin/luminance_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace varilum {
namespace {

TEST(PrintLuminance, PadsToSixCharactersOnTheRight) {
  char buffer[64];
  ASSERT_TRUE(printLuminance(3.14159, buffer, sizeof buffer));
  EXPECT_STREQ(buffer, "3.14  ");
  ASSERT_TRUE(printLuminance(128.0, buffer, sizeof buffer));
  EXPECT_STREQ(buffer, "128.00");
}

TEST(PrintLuminance, NeverWritesBeyondTheBuffer) {
  char buffer[64] = "kept";
  EXPECT_FALSE(printLuminance(std::numeric_limits<double>::max(), buffer, sizeof buffer));
  EXPECT_STREQ(buffer, "kept");
  // 60 digits, point, two decimals: 63 characters, and the NUL just fits.
  EXPECT_TRUE(printLuminance(2e59, buffer, sizeof buffer));
  EXPECT_EQ(std::string{buffer}.size(), 63u);
  EXPECT_FALSE(printLuminance(2e60, buffer, sizeof buffer));
}

double scanned(const char* text) {
  double value = -1000.0;
  EXPECT_EQ(scanLuminance(text, value), LuminanceText::number) << text;
  return value;
}

LuminanceText outcome(const char* text) {
  double value = 7.0;
  const LuminanceText result = scanLuminance(text, value);
  if (result != LuminanceText::number) {
    EXPECT_EQ(value, 7.0) << "untouched on failure";
  }
  return result;
}

TEST(ScanLuminance, ReadsANumberAmongBlanks) {
  EXPECT_EQ(scanned(" 42.5 "), 42.5);
  EXPECT_EQ(scanned("\n\v 7"), 7.0);
  EXPECT_EQ(scanned("-3"), -3.0);
  EXPECT_EQ(scanned(".5"), 0.5);
  EXPECT_EQ(scanned("300"), 300.0);
}

TEST(ScanLuminance, StopsAtTabAndCarriageReturn) {
  EXPECT_EQ(scanned("12\t34"), 12.0);
  EXPECT_EQ(scanned("12\r34"), 12.0);
}

TEST(ScanLuminance, TellsNothingFromNoNumber) {
  EXPECT_EQ(outcome(""), LuminanceText::nothing);
  EXPECT_EQ(outcome("\r12"), LuminanceText::nothing);
  EXPECT_EQ(outcome(nullptr), LuminanceText::nothing);
  EXPECT_EQ(outcome("abc"), LuminanceText::notNumber);
  EXPECT_EQ(outcome("\t12"), LuminanceText::notNumber);
  EXPECT_EQ(outcome("   "), LuminanceText::notNumber);
  EXPECT_EQ(outcome("+5"), LuminanceText::notNumber);
  EXPECT_EQ(outcome("nan"), LuminanceText::notNumber);
  EXPECT_EQ(outcome("-inf"), LuminanceText::notNumber);
  EXPECT_EQ(outcome("1e999"), LuminanceText::notNumber);
}

TEST(ScanLuminance, TakesAtMost256Characters) {
  const std::string blanks(255, ' ');
  EXPECT_EQ(scanned((blanks + "12").c_str()), 1.0);
  EXPECT_EQ(outcome((blanks + " 12").c_str()), LuminanceText::notNumber);
  EXPECT_TRUE(std::isfinite(scanned(std::string(256, '1').c_str())));
}

}  // namespace
}  // namespace varilum
