// tests/plugin/string_table_test.cpp — texts by number.
#include "resources/string_table.h"

#include <gtest/gtest.h>

#include <cstring>

namespace varilum {
namespace {

TEST(StringTable, GivesTextsByTheirNumber) {
  EXPECT_STREQ(lookupString(0), "");
  EXPECT_STREQ(lookupString(1), "Varilum4");
  EXPECT_STREQ(lookupString(2), "Copyright (c) Tovan. All rights reserved.");
  EXPECT_STREQ(lookupString(9), "Keyframes|Smoothing");
  EXPECT_STREQ(lookupString(36), "Input = %-6.2f, spread = %-6.2f");
  EXPECT_STREQ(lookupString(41), "%-6.2f%% red clipped");
  EXPECT_STREQ(lookupString(66), "Luminance: %3.2f ");
  EXPECT_STREQ(lookupString(80),
               "Varilum ignores masks and effects applied in the same composition.\n"
               "Do not use on a layer with time-reverse or time-remapping.\n"
               "To analyze RAW faster, create a proxy.");
  EXPECT_STREQ(lookupString(93),
               "Not enough memory to analyze this layer.\n"
               "Please apply to a shorter duration layer.");
}

TEST(StringTable, KeepsUnusedNumbersEmpty) {
  for (const std::uint32_t id : {12u, 68u, 69u, 71u, 72u, 73u, 74u, 76u, 77u, 82u, 90u, 94u, 96u}) {
    EXPECT_STREQ(lookupString(id), "") << id;
  }
}

TEST(StringTable, GivesTheEmptyTextBeyondItsEnd) {
  EXPECT_STREQ(lookupString(97), "");
  EXPECT_STREQ(lookupString(0xFFFFFFFFu), "");
}

}  // namespace
}  // namespace varilum
