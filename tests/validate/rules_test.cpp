// tests/validate/rules_test.cpp — rules are told apart, explained, and found in the host's reports.
#include "validate/rules.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace validate {
namespace {

TEST(Rules, EachHasANameOfItsOwnAndIsExplained) {
  std::set<std::string> ids;
  for (const Rule& rule : allRules()) {
    EXPECT_TRUE(ids.insert(rule.id).second) << rule.id;
    for (const char* sentence : {rule.why, rule.advice}) {
      const std::string text = sentence;
      ASSERT_FALSE(text.empty()) << rule.id;
      EXPECT_EQ(text.back(), '.') << rule.id;
    }
    EXPECT_EQ(&ruleOf(rule.id), &rule);
  }
}

TEST(Rules, TheHostsReportsAreUnderstood) {
  struct Case {
    const char* report;
    const char* rule;
  };
  constexpr Case kCases[] = {
      {"command 11 did not check in a layer", "leaked-checkout"},
      {"command 11 did not release PF World Suite 2", "leaked-suite"},
      {"DRAW did not release 3 drawing objects", "leaked-drawing"},
      {"the effect wrote outside its output", "wrote-outside"},
      {"dispose: 0x1234 is no live handle", "dead-handle"},
      {"iterate_origin: this host does not serve it", "unserved"},
      {"command 5 gave back locked sequence data", "unbalanced-locks"},
      {"command 5 failed and gave back locked sequence data", "locked-after-failure"},
      {"iterate: no function, or a world without pixels", "interface"},
      {"something the host never said before", "interface"},
  };
  for (const Case& c : kCases) EXPECT_STREQ(ruleOfReport(c.report).id, c.rule) << c.report;
}

}  // namespace
}  // namespace validate
