// tests/validate/text_report_test.cpp — what people read of a run.
#include "validate/text_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace validate {
namespace {

using testing::HasSubstr;
using testing::Not;

CheckResult failedCheck() {
  CheckResult result;
  result.row = &allChecks().front();
  result.verdict = Verdict::violated;
  result.findings.push_back({&ruleOf("leaked-handle"), "not given back: 2 handles"});
  return result;
}

TEST(TextReport, ExplainsARuleOnce) {
  TextReport report;
  const std::string first = report.check(failedCheck());
  EXPECT_THAT(first, HasSubstr("error leaked-handle: not given back: 2 handles"));
  EXPECT_THAT(first, HasSubstr(ruleOf("leaked-handle").why));
  EXPECT_THAT(first, HasSubstr(ruleOf("leaked-handle").advice));
  EXPECT_THAT(report.check(failedCheck()), Not(HasSubstr(ruleOf("leaked-handle").why)));
}

TEST(TextReport, CountsWhatCounts) {
  RunResult run;
  run.checks.push_back(failedCheck());
  run.checks.push_back(failedCheck());
  run.checks.back().verdict = Verdict::passed;
  run.checks.back().findings = {{&ruleOf("no-property-list"), "a note"}};
  EXPECT_EQ(run.violations(), 1);
  EXPECT_THAT(
      TextReport::summary(run, {"x.so", 42, 3}),
      testing::StartsWith("2 checks: 1 passed, 1 failed, 0 skipped; 1 violation (--seed 42"));
}

TEST(TextReport, ListsEveryCheck) {
  const std::string list = listOfChecks();
  for (const TableRow& row : allChecks()) EXPECT_THAT(list, HasSubstr(row.check->id));
}

}  // namespace
}  // namespace validate
