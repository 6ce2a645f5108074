// validate/text_report.cpp — what came of the checks, for people to read.
#include "validate/text_report.h"

namespace validate {
namespace {

constexpr std::size_t kIdWidth = 24;

std::string padded(std::string text, std::size_t width) {
  if (text.size() < width) text.append(width - text.size(), ' ');
  return text;
}

const char* wordOf(Verdict verdict) noexcept {
  switch (verdict) {
    case Verdict::passed:
      return "ok    ";
    case Verdict::violated:
      return "FAILED";
    case Verdict::skipped:
      break;
  }
  return "-     ";
}

std::string counted(int count, const char* noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

}  // namespace

std::string TextReport::heading(const Subject& subject) {
  return subject.library.string() + ", strictness " + std::to_string(subject.strictness) +
         ", seed " + std::to_string(subject.seed) + "\n";
}

std::string TextReport::check(const CheckResult& result) {
  std::string text =
      std::string(wordOf(result.verdict)) + " " + padded(result.row->check->id, kIdWidth);
  text += result.verdict == Verdict::skipped ? result.reason : result.row->check->proves;
  text += "\n";
  for (const Finding& finding : result.findings) {
    text += "       " + std::string(nameOf(finding.rule->severity)) + " " + finding.rule->id +
            ": " + finding.what + "\n";
    if (!explained_.insert(finding.rule->id).second) continue;
    text += std::string("         Why it matters: ") + finding.rule->why + "\n";
    text += std::string("         What to do: ") + finding.rule->advice + "\n";
  }
  return text;
}

std::string TextReport::summary(const RunResult& result, const Subject& subject) {
  const int violations = result.violations();
  return counted(static_cast<int>(result.checks.size()), "check") + ": " +
         std::to_string(result.count(Verdict::passed)) + " passed, " +
         std::to_string(result.count(Verdict::violated)) + " failed, " +
         std::to_string(result.count(Verdict::skipped)) + " skipped; " +
         (violations == 0 ? std::string("nothing violated") : counted(violations, "violation")) +
         " (--seed " + std::to_string(subject.seed) + " repeats this run)\n";
}

std::string listOfChecks() {
  std::string text;
  int strictness = 0;
  for (const TableRow& row : allChecks()) {
    if (row.strictness != strictness) {
      strictness = row.strictness;
      text += "Strictness " + std::to_string(strictness) + ": " + themeOf(strictness) + "\n";
    }
    text += "  " + padded(row.check->id, kIdWidth) + row.check->proves + "\n";
  }
  return text;
}

}  // namespace validate
