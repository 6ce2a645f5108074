// cli/validate_command.cpp — `varilum4 validate`: an effect's library judged by the host.
#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <random>

#include "cli/commands.h"
#include "cli/error.h"
#include "cli/terminal/interrupt.h"
#include "validate/child.h"
#include "validate/runner.h"
#include "validate/text_report.h"

namespace cli {
namespace {

struct ValidateOptions {
  std::string library;
  int strictness = 5;
  std::vector<std::string> only;
  std::uint64_t seed = 0;  // 0: any
  double silence = 10.0;
  bool json = false;
  bool list = false;
  std::uint64_t channel = 0;  // of a process started for one check
};

void print(const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::fflush(stdout);
}

nlohmann::ordered_json asJson(const validate::CheckResult& result) {
  constexpr const char* kVerdicts[] = {"passed", "violated", "skipped"};
  nlohmann::ordered_json findings = nlohmann::ordered_json::array();
  for (const validate::Finding& finding : result.findings) {
    findings.push_back({{"id", finding.rule->id},
                        {"severity", nameOf(finding.rule->severity)},
                        {"what", finding.what},
                        {"why", finding.rule->why},
                        {"advice", finding.rule->advice}});
  }
  nlohmann::ordered_json check{{"event", "check"},
                               {"id", result.row->check->id},
                               {"strictness", result.row->strictness},
                               {"proves", result.row->check->proves},
                               {"verdict", kVerdicts[static_cast<int>(result.verdict)]}};
  if (!result.reason.empty()) check["reason"] = result.reason;
  check["milliseconds"] = result.took.count();
  check["findings"] = std::move(findings);
  return check;
}

void printLine(const nlohmann::ordered_json& object) {
  // What an effect says need not be UTF-8.
  print(object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n");
}

validate::RunResult runAsJson(validate::RunOptions run) {
  const validate::Subject& subject = run.subject;
  printLine({{"event", "start"},
             {"library", subject.library.string()},
             {"strictness", subject.strictness},
             {"seed", subject.seed}});
  run.onResult = [](const validate::CheckResult& result) { printLine(asJson(result)); };
  const validate::RunResult result = validate::runChecks(run);
  if (result.interrupted) return result;
  printLine({{"event", "done"},
             {"checks", result.checks.size()},
             {"passed", result.count(validate::Verdict::passed)},
             {"violated", result.count(validate::Verdict::violated)},
             {"skipped", result.count(validate::Verdict::skipped)},
             {"violations", result.violations()}});
  return result;
}

validate::RunResult runAsText(validate::RunOptions run) {
  print(validate::TextReport::heading(run.subject));
  validate::TextReport report;
  run.onResult = [&](const validate::CheckResult& result) { print(report.check(result)); };
  const validate::RunResult result = validate::runChecks(run);
  if (!result.interrupted) print(validate::TextReport::summary(result, run.subject));
  return result;
}

validate::Subject subjectOf(const ValidateOptions& options) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(options.library, ignored)) {
    throw UsageError(fmt::format("There is no library {}; name an effect's file.",
                                 options.library.empty() ? "named" : options.library));
  }
  validate::Subject subject;
  subject.library = std::filesystem::absolute(options.library);
  subject.seed = options.seed != 0 ? options.seed : std::random_device{}();
  subject.strictness = options.strictness;
  return subject;
}

void run(const ValidateOptions& options) {
  if (options.list) return print(validate::listOfChecks());
  for (const std::string& id : options.only) {
    if (validate::findCheck(id) != nullptr) continue;
    throw UsageError(fmt::format("There is no check {}; see 'varilum4 validate --list'.", id));
  }
  validate::RunOptions run;
  run.subject = subjectOf(options);
  if (options.channel != 0 && options.only.size() == 1) {
    validate::runChild(*validate::findCheck(options.only.front()), run.subject, options.channel);
  }
  run.only = options.only;
  run.silence = std::chrono::milliseconds(static_cast<std::int64_t>(options.silence * 1000.0));
  run.stopAsked = interrupted;
  const validate::RunResult result =
      options.json ? runAsJson(std::move(run)) : runAsText(std::move(run));
  if (result.interrupted) throw Interrupted();
  if (const int count = result.violations(); count > 0) {
    throw Failure(fmt::format("The effect broke the interface's rules: {} violation{}.", count,
                              count == 1 ? "" : "s"));
  }
}

}  // namespace

void addValidateCommand(CLI::App& app, Work& work) {
  CLI::App* command = app.add_subcommand(
      "validate", "Judge any effect's library: what it violates, why that matters, what to do.");
  auto options = std::make_shared<ValidateOptions>();
  command->add_option("LIBRARY", options->library, "The effect's library.");
  command
      ->add_option("--strictness", options->strictness,
                   "How much is demanded, from 1 (it loads) to 10 (everything). Default: 5.")
      ->check(CLI::Range(validate::kLaxest, validate::kStrictest))
      ->type_name("LEVEL");
  command
      ->add_option("--only", options->only,
                   "Make this check alone, whatever its strictness; may be given several times.")
      ->type_name("ID")
      ->allow_extra_args(false);
  command
      ->add_option("--seed", options->seed,
                   "Make random choices as a run did that told this seed. Default: any.")
      ->type_name("N");
  command
      ->add_option("--silence", options->silence,
                   "Take an effect for hung that does not answer for so long. Default: 10.")
      ->check(CLI::Range(0.1, 3600.0))
      ->type_name("SECONDS");
  command->add_flag("--json", options->json, "Print one JSON object a line.");
  command->add_flag("--list", options->list, "List the checks, and end.");
  command->add_option("--channel", options->channel)->group("");
  command->callback([options, &work] { work = [options] { run(*options); }; });
}

}  // namespace cli
