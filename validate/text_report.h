// validate/text_report.h — what came of the checks, for people to read.
#pragma once

#include <set>
#include <string>

#include "validate/runner.h"

namespace validate {

class TextReport {
 public:
  /// What is judged and how; then one or more lines for each check; then the sums. Lines end with
  /// '\n'. A rule is explained where it is first broken.
  static std::string heading(const Subject& subject);
  std::string check(const CheckResult& result);
  static std::string summary(const RunResult& result, const Subject& subject);

 private:
  std::set<std::string> explained_;
};

/// All checks with the strictness of each and what it proves.
std::string listOfChecks();

}  // namespace validate
