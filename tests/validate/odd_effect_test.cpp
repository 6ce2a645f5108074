// tests/validate/odd_effect_test.cpp — each broken rule is found, and what is whole passes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iterator>

#include "tests/validate/run_odd_effect.h"

namespace {

using testing::Contains;
using testing::IsEmpty;

struct Bad {
  const char* variant;
  const char* check;
  const char* rule;
};

constexpr Bad kBad[] = {
    {"refuses", "set-up", "refused"},
    {"wrong-count", "set-up", "param-count"},
    {"same-ids", "declarations", "param-id"},
    {"bad-range", "declarations", "param-range"},
    {"bad-popup", "declarations", "param-popup"},
    {"quiet-button", "declarations", "param-button"},
    {"open-group", "declarations", "param-group"},
    {"leaks-handle", "apply", "leaked-handle"},
    {"double-dispose", "apply", "dead-handle"},
    {"replaces-data", "apply", "sequence-replaced"},
    {"leaks-checkout", "render-8", "leaked-checkout"},
    {"leaks-world", "render-8", "leaked-world"},
    {"leaks-suite", "render-8", "leaked-suite"},
    {"wrong-thread", "render-8", "wrong-thread"},
    {"writes-outside", "render-8", "wrote-outside"},
    {"ignores-rowbytes", "render-8", "wrote-outside"},
    {"writes-input", "render-8", "wrote-input"},
    {"crashes", "render-8", "crashed"},
    {"exits", "render-8", "exited"},
    {"throws", "render-8", "exception-escaped"},
    {"silent-error", "render-8", "silent-error"},
    {"silent-error", "render-8", "command-failed"},
    {"large-result", "render-float", "result-rect"},
    {"random", "repeatable", "not-repeatable"},
    {"skips-pixels", "fills-output", "unwritten-output"},
    {"dynamic-flags", "dynamic-flags", "dynamic-flags"},
    {"leaves-lock", "edits", "unbalanced-locks"},
    {"wears-out", "saving", "saved-differs"},
    {"shares-settings", "two-instances", "instances-mixed"},
    {"thread-dependent", "clones", "threads-differ"},
    {"counts-on-address", "moving-memory", "differs-under-stress"},
    {"needs-memory", "some-refusals", "crashed"},
    {"null-crash", "out-of-order", "crashed"},
};

std::string nameOf(const Bad& bad) {
  std::string name = std::string(bad.variant) + "_" + bad.rule;
  for (char& c : name) {
    if (c == '-') c = '_';
  }
  return name;
}

class BadEffect : public testing::TestWithParam<Bad> {};

TEST_P(BadEffect, IsFoundOut) {
  const Bad& bad = GetParam();
  const OddVariant variant(bad.variant);
  const validate::RunResult result =
      validate::runChecks(judging(VARILUM_ODD_EFFECT_PATH, {bad.check}));
  std::vector<std::string> rules = rulesBroken(result);
#ifdef VARILUM_SANITIZED
  for (std::string& rule : rules) {
    if (rule == "exited" && std::string("crashed") == bad.rule) rule = "crashed";
  }
#endif
  EXPECT_THAT(rules, Contains(bad.rule)) << describe(result);
}

INSTANTIATE_TEST_SUITE_P(Variants, BadEffect, testing::ValuesIn(kBad),
                         [](const auto& row) { return nameOf(row.param); });

TEST(HungEffect, IsKilledAndFoundOut) {
  const OddVariant variant("hangs");
  validate::RunOptions options = judging(VARILUM_ODD_EFFECT_PATH, {"render-8"});
  options.silence = std::chrono::milliseconds(500);
  const validate::RunResult result = validate::runChecks(options);
  EXPECT_THAT(rulesBroken(result), Contains("hung")) << describe(result);
  EXPECT_THAT(describe(result), testing::HasSubstr("render frame 0"));
}

// Without a set-up there is nothing to try; the other checks say so.
TEST(RefusingEffect, LeavesTheRestUntried) {
  const OddVariant variant("refuses");
  const validate::RunResult result = validate::runChecks(judging(VARILUM_ODD_EFFECT_PATH, {}));
  EXPECT_EQ(result.count(validate::Verdict::violated), 1);
  EXPECT_EQ(result.count(validate::Verdict::passed), 1);  // it loads
  EXPECT_EQ(result.checks.back().reason, "not tried: see set-up");
}

TEST(NoLibrary, CannotBeLoaded) {
  const validate::RunResult result = validate::runChecks(judging("/no/such/effect.so", {}));
  EXPECT_THAT(rulesBroken(result), testing::ElementsAre("load-failed")) << describe(result);
}

// Everything is tried of these: of depths, smart renders, panels and the rest only what they claim.
class GoodEffect : public testing::TestWithParam<const char*> {};

TEST_P(GoodEffect, PassesAtTheHighestStrictness) {
  const OddVariant variant(GetParam());
  const validate::RunResult result = validate::runChecks(judging(VARILUM_ODD_EFFECT_PATH, {}));
  EXPECT_THAT(rulesBroken(result), IsEmpty()) << describe(result);
  EXPECT_EQ(result.checks.size(), validate::allChecks().size());
}

INSTANTIATE_TEST_SUITE_P(Variants, GoodEffect,
                         testing::Values("plain", "deep", "smart", "kinds", "keeper", "expands",
                                         "threaded"),
                         [](const auto& row) { return std::string(row.param); });

TEST(Runner, StopsWhenAsked) {
  const OddVariant variant("hangs");
  validate::RunOptions options = judging(VARILUM_ODD_EFFECT_PATH, {"render-8"});
  options.stopAsked = [] { return true; };
  EXPECT_TRUE(validate::runChecks(options).interrupted);
}

TEST(Runner, RefusesUnknownChecks) {
  EXPECT_THROW(validate::runChecks(judging(VARILUM_ODD_EFFECT_PATH, {"no-such-check"})),
               std::invalid_argument);
}

// The strictness chooses, and a higher one tries all that a lower one does.
TEST(Runner, TriesWhatTheStrictnessAsksFor) {
  const OddVariant variant("plain");
  validate::RunOptions options = judging(VARILUM_ODD_EFFECT_PATH, {});
  options.subject.strictness = 2;
  const validate::RunResult result = validate::runChecks(options);
  ASSERT_FALSE(result.checks.empty());
  for (const validate::CheckResult& check : result.checks) EXPECT_LE(check.row->strictness, 2);
  EXPECT_LT(result.checks.size(), validate::allChecks().size());
}

}  // namespace
