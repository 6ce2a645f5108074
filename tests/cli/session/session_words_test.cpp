// tests/cli/session/session_words_test.cpp — a session's command lines taken apart.
#include "cli/session/session_words.h"

#include <gtest/gtest.h>

namespace cli {
namespace {

using Words = std::vector<std::string>;

TEST(SessionWords, QuotesHoldBlanksAndBackslashesOnlyHideQuotesAndThemselves) {
  EXPECT_EQ(splitWords(R"(open a\b.y4m)"), (Words{"open", R"(a\b.y4m)"}));
  EXPECT_EQ(splitWords(R"(open "C:\my clips\in.y4m" # last)"),
            (Words{"open", R"(C:\my clips\in.y4m)"}));
  EXPECT_EQ(splitWords(R"("a \"b\" \\c" d)"), (Words{R"(a "b" \c)", "d"}));
}

}  // namespace
}  // namespace cli
