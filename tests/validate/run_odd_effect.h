// tests/validate/run_odd_effect.h — one variant of the odd effect, judged.
#pragma once

#include <string>
#include <vector>

#include "tests/validate/odd_variant.h"
#include "validate/runner.h"

inline validate::RunOptions judging(const std::string& library, std::vector<std::string> only) {
  validate::RunOptions options;
  options.subject = {library, 7, validate::kStrictest};
  options.only = std::move(only);
  options.silence = std::chrono::seconds(60);
  return options;
}

inline std::vector<std::string> rulesBroken(const validate::RunResult& result) {
  std::vector<std::string> rules;
  for (const validate::CheckResult& check : result.checks) {
    for (const validate::Finding& finding : check.findings) {
      if (finding.rule->severity != validate::Severity::note) rules.push_back(finding.rule->id);
    }
  }
  return rules;
}

// For messages of failed tests.
inline std::string describe(const validate::RunResult& result) {
  std::string text;
  for (const validate::CheckResult& check : result.checks) {
    for (const validate::Finding& finding : check.findings) {
      text +=
          std::string(check.row->check->id) + ": " + finding.rule->id + ": " + finding.what + "\n";
    }
  }
  return text;
}
