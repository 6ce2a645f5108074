// tests/cli/help_formatter_test.cpp — wrapping.
#include "cli/help_formatter.h"

#include <gtest/gtest.h>

namespace cli {
namespace {

TEST(Wrapped, BreaksAtBlanksAndIndents) {
  EXPECT_EQ(wrapped("one two three four", 9, 2), "one two\n  three\n  four");
  EXPECT_EQ(wrapped("one  two", 80, 0), "one two");
  EXPECT_EQ(wrapped("", 10, 3), "");
}

TEST(Wrapped, KeepsLineEndsAndLongWords) {
  EXPECT_EQ(wrapped("a\nb", 80, 1), "a\n b");
  EXPECT_EQ(wrapped("a verylongword b", 5, 0), "a\nverylongword\nb");
}

}  // namespace
}  // namespace cli
