// tests/validate/real_effect_test.cpp — the effect that this project is about, judged.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/validate/run_odd_effect.h"

namespace {

class RealEffect : public testing::TestWithParam<validate::TableRow> {};

TEST_P(RealEffect, Passes) {
  const validate::RunResult result =
      validate::runChecks(judging(VARILUM_EFFECT_PATH, {GetParam().check->id}));
  EXPECT_EQ(result.violations(), 0) << describe(result);
}

INSTANTIATE_TEST_SUITE_P(Checks, RealEffect,
                         testing::ValuesIn(validate::allChecks().begin(),
                                           validate::allChecks().end()),
                         [](const auto& row) {
                           std::string name = row.param.check->id;
                           for (char& c : name) {
                             if (c == '-') c = '_';
                           }
                           return name;
                         });

// The one thing that it says it does not do; everything else is really tried.
TEST(RealEffect, IsTriedInEverythingButThreadedRenders) {
  for (const validate::CheckResult& check :
       validate::runChecks(
           judging(VARILUM_EFFECT_PATH, {"render-float", "dynamic-flags", "panel", "arbitrary-data",
                                         "edits", "ui-beside-render", "clones"}))
           .checks) {
    const bool skipped = check.verdict == validate::Verdict::skipped;
    EXPECT_EQ(skipped, std::string(check.row->check->id) == "clones") << check.row->check->id;
  }
}

}  // namespace
