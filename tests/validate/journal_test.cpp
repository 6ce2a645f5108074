// tests/validate/journal_test.cpp — what a check tells, written and read back.
#include "validate/journal.h"

#include <gtest/gtest.h>

#include <vector>

namespace validate {
namespace {

TEST(Journal, LinesAreReadAsTheyWereWritten) {
  for (const char* text : {"", "plain", "two\nlines", "a\ttab", "back\\slash\\n", "\\"}) {
    JournalLine read;
    ASSERT_TRUE(readLine(writeLine({Entry::finding, "some-rule", text}), read)) << text;
    EXPECT_EQ(read.entry, Entry::finding);
    EXPECT_EQ(read.rule, "some-rule");
    EXPECT_EQ(read.text, text);
    EXPECT_EQ(writeLine(read).find('\n'), std::string::npos);
  }
}

TEST(Journal, OtherTextsAreNoLines) {
  for (const char* text : {"", "S", "hello", "X\t\tno such entry", "F\tno second tab"}) {
    JournalLine read;
    EXPECT_FALSE(readLine(text, read)) << text;
  }
}

TEST(Journal, TellsABrokenRuleOnceAndWithItsStep) {
  std::vector<JournalLine> lines;
  Journal journal([&](const JournalLine& line) { lines.push_back(line); });
  journal.step("first");
  journal.violate("crashed", "it fell");
  journal.step("second");
  journal.violate("crashed", "it fell");
  journal.violate("hung", "it fell");
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(lines[1].text, "it fell (step: first)");
  EXPECT_EQ(lines[3].rule, "hung");
}

TEST(JournalReader, PutsLinesTogetherFromPieces) {
  const std::string bytes = writeLine({Entry::step, {}, "one"}) + "\nrubbish\n" +
                            writeLine({Entry::done, {}, {}}) + "\nunfinished";
  std::vector<std::string> texts;
  JournalReader reader([&](const JournalLine& line) { texts.push_back(line.text); });
  for (const char byte : bytes) {
    EXPECT_EQ(reader.done(), texts.size() == 2);
    reader.take({&byte, 1});
  }
  EXPECT_EQ(texts, (std::vector<std::string>{"one", ""}));
  EXPECT_TRUE(reader.done());
}

TEST(Journal, KnowsOnlyRulesThatThereAre) {
  Journal journal([](const JournalLine&) {});
  EXPECT_THROW(journal.violate("no-such-rule", "what"), std::logic_error);
}

}  // namespace
}  // namespace validate
