// validate/runner.h — running checks, and what came of each.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "validate/check_table.h"
#include "validate/rules.h"

namespace validate {

struct Finding {
  const Rule* rule = nullptr;
  std::string what;
};

enum class Verdict : std::uint8_t { passed, violated, skipped };

struct CheckResult {
  const TableRow* row = nullptr;
  Verdict verdict = Verdict::passed;
  std::string reason;  // of a skip
  std::vector<Finding> findings;
  std::chrono::milliseconds took{0};
};

struct RunOptions {
  Subject subject;
  std::vector<std::string> only;  // ids; empty: all of the strictness
  std::chrono::milliseconds silence{10'000};
  std::function<bool()> stopAsked;
  std::function<void(const CheckResult&)> onResult;  // as they come
};

struct RunResult {
  std::vector<CheckResult> checks;
  bool interrupted = false;

  int count(Verdict verdict) const noexcept;
  /// Warnings and errors.
  int violations() const noexcept;
};

/// Each check in a process of its own. Throws std::invalid_argument for an unknown id in `only`.
RunResult runChecks(const RunOptions& options);

}  // namespace validate
