// cli/deflicker_command.cpp — `varilum4 deflicker`: analyse a clip and write it steady.
#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <chrono>
#include <memory>

#include "cli/commands.h"
#include "cli/job/job_report.h"
#include "cli/job/render_job.h"
#include "cli/options/output_options.h"
#include "cli/plot/plot_file.h"
#include "cli/reporting/report_file.h"
#include "cli/same_file.h"
#include "cli/workbench.h"
#include "media/format_help.h"

namespace cli {
namespace {

struct DeflickerOptions {
  ClipOptions clip;
  std::string output;
  std::string plot;
  EffectOptions effect;
  ShotOptions shots;
  OutputOptions writing;
  ReportOptions report;
  WorkOptions work;
  ConsoleOptions console;
};

void run(const DeflickerOptions& options) {
  const auto start = std::chrono::steady_clock::now();
  requireDepthOf(options.work.role, options.writing);
  refuseSameFile(options.clip.path, options.output);
  requirePlotWritable(options.plot, options.writing.force);
  Console console(options.console);
  Workbench bench(options.clip, options.work, console);
  checkAgainstClip(options.effect, bench.source().clip());
  checkReports(options.report, bench.source().clip().frameCount, options.writing.force);
  Output output(options.output, bench, options.writing, {}, console);
  bench.analyze(options.effect, options.shots);
  reportFindings(bench.found(), console);
  const media::FrameRange all{0, bench.source().info().frameCount - 1};
  ReportStills stills(options.report, bench, all);
  const JobResult job =
      renderTo(output, bench, options.writing, workerCount(options.work), all, console,
               [&stills](const RenderedFrame& frame) { stills.take(frame); });
  if (!options.plot.empty()) {
    writePlot(options.plot, bench.source().clip(), bench.levels(), bench.found(), job.frames);
  }
  const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
  writeReports(options.report, job, bench, stills, options.output, spent.count(),
               options.writing.force);
  reportRendering(job, options.output, spent.count(), console);
}

}  // namespace

void addDeflickerCommand(CLI::App& app, Work& work) {
  CLI::App* command = app.add_subcommand(
      "deflicker", "Write a clip with its flicker removed: analyse every frame, then render.");
  auto options = std::make_shared<DeflickerOptions>();
  command->add_option("IN", options->clip.path, media::kInputHelp)->required();
  command->add_option("OUT", options->output, media::kOutputHelp)->required();
  addShotOptions(*command, options->shots);
  addEffectOptions(*command, options->effect);
  addReadOptions(*command, options->clip.read);
  addOutputOptions(*command, options->writing);
  command
      ->add_option("--plot", options->plot,
                   "Draw brightness before, wanted and after over all frames into this PNG.")
      ->type_name("PNG")
      ->group("General");
  addReportOptions(*command, options->report);
  addForceOption(*command, options->writing.force);
  addHostRoleOption(*command, options->work);
  addGeneralOptions(*command, options->work, options->console);
  command->callback([options, &work] { work = [options] { run(*options); }; });
}

}  // namespace cli
