// cli/analyze_command.cpp — `varilum4 analyze`: measure a clip and keep the result.
#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <chrono>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/commands.h"
#include "cli/job/job_report.h"
#include "cli/options/output_options.h"
#include "cli/output_file.h"
#include "cli/project/new_project.h"
#include "cli/project/project_file.h"
#include "cli/same_file.h"
#include "cli/workbench.h"
#include "media/format_help.h"

namespace cli {
namespace {

struct AnalyzeOptions {
  ClipOptions clip;
  std::string project;
  EffectOptions effect;
  ShotOptions shots;
  WorkOptions work;
  ConsoleOptions console;
  bool force = false;
};

void run(const AnalyzeOptions& options) {
  const auto start = std::chrono::steady_clock::now();
  refuseSameFile(options.clip.path, options.project);
  requireWritable(options.project, options.force);
  Console console(options.console);
  Workbench bench(options.clip, options.work, console);
  bench.analyze(options.effect, options.shots);
  reportFindings(bench.found(), console);
  const double flicker = figuresOf(bench.levels().input, bench.found()).flicker;
  const Project project = newProject(bench, options.clip, options.project);
  writeProject(options.project, project, options.force);
  for (const std::string& warning : bench.source().reader().warnings()) console.warn(warning);

  const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
  if (console.json()) {
    const nlohmann::ordered_json line{{"event", "done"},
                                      {"output", options.project},
                                      {"frames", project.layerFrames},
                                      {"shots", project.shots.size()},
                                      {"seconds", spent.count()},
                                      {"flickerPercent", {{"before", flicker}}}};
    console.result(line.dump());
    return;
  }
  console.result(fmt::format("{}: {} frames analysed in {:.1f} s, flicker {:.2f} %",
                             options.project, project.layerFrames, spent.count(), flicker));
}

}  // namespace

void addAnalyzeCommand(CLI::App& app, Work& work) {
  CLI::App* command = app.add_subcommand(
      "analyze", "Measure every frame of a clip and keep the result in a project to render from.");
  auto options = std::make_shared<AnalyzeOptions>();
  command->add_option("IN", options->clip.path, media::kInputHelp)->required();
  command
      ->add_option("-o,--output", options->project, "The project to write, such as shot.varilum.")
      ->required()
      ->type_name("PROJECT");
  addShotOptions(*command, options->shots);
  addEffectOptions(*command, options->effect);
  addReadOptions(*command, options->clip.read);
  addForceOption(*command, options->force);
  addHostRoleOption(*command, options->work);
  addGeneralOptions(*command, options->work, options->console);
  command->callback([options, &work] { work = [options] { run(*options); }; });
}

}  // namespace cli
