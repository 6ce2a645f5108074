// tests/validate/check_table_test.cpp — checks are told apart, in order, and say what they prove.
#include "validate/check_table.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace validate {
namespace {

TEST(CheckTable, EachHasANameOfItsOwnAndProvesSomething) {
  std::set<std::string> ids;
  for (const TableRow& row : allChecks()) {
    EXPECT_TRUE(ids.insert(row.check->id).second) << row.check->id;
    EXPECT_FALSE(std::string(row.check->proves).empty()) << row.check->id;
    EXPECT_EQ(findCheck(row.check->id), row.check);
  }
  EXPECT_EQ(findCheck("no-such-check"), nullptr);
}

TEST(CheckTable, EveryStrictnessAddsSomething) {
  std::set<int> levels;
  int last = kLaxest;
  for (const TableRow& row : allChecks()) {
    EXPECT_GE(row.strictness, last) << row.check->id;
    last = row.strictness;
    levels.insert(row.strictness);
  }
  for (int level = kLaxest; level <= kStrictest; ++level) {
    EXPECT_TRUE(levels.contains(level)) << level;
    EXPECT_STRNE(themeOf(level), "") << level;
  }
}

}  // namespace
}  // namespace validate
