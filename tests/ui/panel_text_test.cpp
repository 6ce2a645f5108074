// tests/ui/panel_text_test.cpp — widening, cutting and formatting.
#include "ui/panel_text.h"

#include <gtest/gtest.h>

#include <string>

namespace varilum {
namespace {

std::string narrow(const WideLine& line) {
  std::string text;
  for (const std::uint16_t* unit = line.units(); *unit != 0; ++unit) {
    text += static_cast<char>(*unit);
  }
  return text;
}

TEST(PanelText, WidensPlainText) {
  EXPECT_TRUE(WideLine{"Histogram Graph"}.valid());
  EXPECT_EQ(narrow(WideLine{"Histogram Graph"}), "Histogram Graph");
  EXPECT_TRUE(WideLine{""}.valid());
  EXPECT_EQ(narrow(WideLine{""}), "");
}

TEST(PanelText, CutsAfterAHundredCharacters) {
  const std::string exact(100, 'a');
  EXPECT_EQ(narrow(WideLine{exact.c_str()}), exact);
  EXPECT_EQ(narrow(WideLine{(exact + "b").c_str()}), exact);
}

// Windows takes every byte for a character in its plain locale.
#ifndef _WIN32
TEST(PanelText, KnowsTextOfAnotherEncoding) {
  // Not a character in any multi-byte locale, and none at all in the plain one.
  const WideLine line{"a\xFF\xFE"};
  EXPECT_FALSE(line.valid());
  EXPECT_EQ(line.units()[0], 0);
}
#endif

TEST(PanelText, FormatsAndCuts) {
  const FormattedLine text{"%-6.2f%% red clipped", 0.2};
  EXPECT_STREQ(text.text(), "0.20  % red clipped");
  EXPECT_EQ(text.length(), 19);
  const char* volatile format = "%.2f";  // not for the compiler to see through
  EXPECT_EQ((FormattedLine{format, 1e300}.length()), 100);
}

}  // namespace
}  // namespace varilum
