// tests/cli/options/frame_span_test.cpp — ranges as users write them.
#include "cli/options/frame_span.h"

#include <gtest/gtest.h>

#include "cli/error.h"

namespace cli {
namespace {

TEST(FrameSpan, ReadsEveryWayOfWritingOne) {
  EXPECT_EQ(parseFrameSpan("10..20"), (FrameSpan{10, 20}));
  EXPECT_EQ(parseFrameSpan("10.."), (FrameSpan{10, std::nullopt}));
  EXPECT_EQ(parseFrameSpan("..20"), (FrameSpan{0, 20}));
  EXPECT_EQ(parseFrameSpan("7"), (FrameSpan{7, 7}));
  EXPECT_EQ(parseFrameSpan(".."), (FrameSpan{0, std::nullopt}));
}

TEST(FrameSpan, RefusesEverythingElse) {
  for (const char* text : {"", "a", "1-2", "20..10", "-1..3", "1...3", "1..2..3", " 1..2", "1.5",
                           "99999999999999999999", "1..99999999999"}) {
    EXPECT_FALSE(parseFrameSpan(text)) << text;
  }
}

TEST(FrameSpan, EndsWithTheClipAndNotBeyond) {
  EXPECT_EQ(lastFrameIn({3, std::nullopt}, 10, "--frames"), 9);
  EXPECT_EQ(lastFrameIn({0, 9}, 10, "--frames"), 9);
  EXPECT_THROW(lastFrameIn({0, 10}, 10, "--frames"), UsageError);
  EXPECT_THROW(lastFrameIn({10, std::nullopt}, 10, "--frames"), UsageError);
}

}  // namespace
}  // namespace cli
