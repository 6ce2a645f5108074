// tests/report/base64_test.cpp — bytes as text.
#include "report/base64.h"

#include <gtest/gtest.h>

#include <string>

namespace report::test {
namespace {

TEST(Base64, GivesTheStandardsOwnExamples) {
  EXPECT_EQ(base64(""), "");
  EXPECT_EQ(base64("f"), "Zg==");
  EXPECT_EQ(base64("fo"), "Zm8=");
  EXPECT_EQ(base64("foo"), "Zm9v");
  EXPECT_EQ(base64("foob"), "Zm9vYg==");
  EXPECT_EQ(base64("fooba"), "Zm9vYmE=");
  EXPECT_EQ(base64("foobar"), "Zm9vYmFy");
}

TEST(Base64, TakesBytesOfAnyValue) {
  EXPECT_EQ(base64(std::string("\xff\xfe\x00", 3)), "//4A");
  EXPECT_EQ(base64(std::string("\xfb\xef\xbe", 3)), "++++");
}

}  // namespace
}  // namespace report::test
