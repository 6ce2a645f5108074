// validate/runner.cpp — running checks, and what came of each.
#include "validate/runner.h"

#include <algorithm>
#include <set>
#include <stdexcept>

#include "validate/child.h"

namespace validate {
namespace {

std::vector<const TableRow*> chosen(const RunOptions& options) {
  std::vector<const TableRow*> rows;
  for (const TableRow& row : allChecks()) {
    const bool named =
        std::find(options.only.begin(), options.only.end(), row.check->id) != options.only.end();
    if (options.only.empty() ? row.strictness <= options.subject.strictness : named) {
      rows.push_back(&row);
    }
  }
  for (const std::string& id : options.only) {
    if (findCheck(id) == nullptr) throw std::invalid_argument(id);
  }
  return rows;
}

const char* ruleOfEnding(Ending ending) noexcept {
  switch (ending) {
    case Ending::crashed:
      return "crashed";
    case Ending::hung:
      return "hung";
    default:
      return "exited";
  }
}

void addEnding(CheckResult& result, const ChildOutcome& outcome, const std::string& step,
               std::chrono::milliseconds silence) {
  std::string what = outcome.how;
  if (outcome.ending == Ending::hung) {
    what = "no sign of life for " + std::to_string(silence.count()) + " ms";
  }
  result.findings.push_back(
      {&ruleOf(ruleOfEnding(outcome.ending)), what + " (step: " + step + ")"});
}

CheckResult runOne(const TableRow& row, const RunOptions& options, bool& interrupted) {
  CheckResult result;
  result.row = &row;
  std::string step = "begin";
  bool skipped = false;
  ChildWatch watch;
  watch.silence = options.silence;
  watch.stopAsked = options.stopAsked;
  watch.onLine = [&](const JournalLine& line) {
    if (line.entry == Entry::step) step = line.text;
    if (line.entry == Entry::finding) result.findings.push_back({&ruleOf(line.rule), line.text});
    if (line.entry == Entry::skip) {
      skipped = true;
      result.reason = line.text;
    }
  };
  const auto begin = std::chrono::steady_clock::now();
  const ChildOutcome outcome = runInChild(*row.check, options.subject, watch);
  result.took = std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now() - begin);
  interrupted = outcome.ending == Ending::interrupted;
  if (outcome.ending != Ending::finished && !interrupted) {
    addEnding(result, outcome, step, options.silence);
  }
  const bool broken = std::any_of(result.findings.begin(), result.findings.end(),
                                  [](const auto& f) { return f.rule->severity != Severity::note; });
  result.verdict = broken ? Verdict::violated : skipped ? Verdict::skipped : Verdict::passed;
  return result;
}

// Whether nothing else can be tried after this.
bool isTheEnd(const CheckResult& result) {
  static const std::set<std::string> fatal{"crashed", "hung", "exited", "load-failed", "refused"};
  return result.row->gate &&
         std::any_of(result.findings.begin(), result.findings.end(),
                     [](const Finding& finding) { return fatal.contains(finding.rule->id); });
}

}  // namespace

int RunResult::count(Verdict verdict) const noexcept {
  return static_cast<int>(std::count_if(
      checks.begin(), checks.end(), [&](const CheckResult& c) { return c.verdict == verdict; }));
}

int RunResult::violations() const noexcept {
  int sum = 0;
  for (const CheckResult& check : checks) {
    for (const Finding& finding : check.findings) {
      if (finding.rule->severity != Severity::note) ++sum;
    }
  }
  return sum;
}

RunResult runChecks(const RunOptions& options) {
  RunResult all;
  std::string ended;  // the gate that did not open
  for (const TableRow* row : chosen(options)) {
    CheckResult result;
    if (ended.empty()) {
      result = runOne(*row, options, all.interrupted);
      if (all.interrupted) return all;
      if (isTheEnd(result)) ended = row->check->id;
    } else {
      result.row = row;
      result.verdict = Verdict::skipped;
      result.reason = "not tried: see " + ended;
    }
    if (options.onResult) options.onResult(result);
    all.checks.push_back(std::move(result));
  }
  return all;
}

}  // namespace validate
