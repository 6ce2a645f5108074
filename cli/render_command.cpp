// cli/render_command.cpp — `varilum4 render`: write a clip from its project.
#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <chrono>
#include <memory>
#include <optional>

#include "cli/commands.h"
#include "cli/job/job_report.h"
#include "cli/job/render_job.h"
#include "cli/options/frame_span.h"
#include "cli/options/output_options.h"
#include "cli/plot/plot_file.h"
#include "cli/project/project_clip.h"
#include "cli/project/project_file.h"
#include "cli/reporting/report_file.h"
#include "cli/same_file.h"
#include "cli/workbench.h"

namespace cli {
namespace {

struct RenderOptions {
  std::string project;
  std::string output;
  std::string input;
  std::optional<FrameSpan> frames;
  EffectOptions effect;
  media::ReadOptions read;
  OutputOptions writing;
  ReportOptions report;
  WorkOptions work;
  ConsoleOptions console;
};

void run(const RenderOptions& options) {
  const auto start = std::chrono::steady_clock::now();
  requireDepthOf(options.work.role, options.writing);
  refuseSameFile(options.project, options.output);
  const Project project = readProject(options.project);
  ClipOptions clip = locateClip(options.project, project, options.input);
  if (options.read.startNumber) clip.read.startNumber = options.read.startNumber;
  clip.read.frameRate = options.read.frameRate;
  refuseSameFile(clip.path, options.output);

  Console console(options.console);
  Workbench bench(clip, options.work, console);
  requireSameClip(project, bench.source());
  const std::int64_t layerFrames = project.layerFrames;
  media::FrameRange frames{0, layerFrames - 1};
  if (options.frames) {
    frames = {options.frames->first, lastFrameIn(*options.frames, layerFrames, "--frames")};
  }
  bench.open(project);
  std::optional<media::FrameRange> cut;
  if (options.frames) cut = frames;
  checkReports(options.report, layerFrames, options.writing.force);
  Output output(options.output, bench, options.writing, cut, console);
  bench.adjust(options.effect);
  ReportStills stills(options.report, bench, frames);
  const JobResult job =
      renderTo(output, bench, options.writing, workerCount(options.work), frames, console,
               [&stills](const RenderedFrame& frame) { stills.take(frame); });
  const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
  writeReports(options.report, job, bench, stills, options.output, spent.count(),
               options.writing.force);
  reportRendering(job, options.output, spent.count(), console);
}

}  // namespace

void addRenderCommand(CLI::App& app, Work& work) {
  CLI::App* command = app.add_subcommand(
      "render", "Write a clip from a project made by 'analyze', also with other settings.");
  auto options = std::make_shared<RenderOptions>();
  command->add_option("PROJECT", options->project, "The project, such as shot.varilum.")
      ->required();
  command
      ->add_option("OUT", options->output,
                   "Where to write the clip; the extension says how, as with 'deflicker'.")
      ->required();
  command
      ->add_option_function<std::string>(
          "--frames",
          [options](const std::string& text) {
            options->frames = parseFrameSpan(text);
            if (!options->frames) {
              throw CLI::ValidationError("--frames",
                                         "'" + text + "' is no range of frames such as 10..20.");
            }
          },
          "Write these frames only, both included; A.. and ..B serve too. Sound is cut to fit.")
      ->type_name("A..B")
      ->group("Project");
  command->add_option("--input", options->input, "The clip, if it is no longer where it was.")
      ->type_name("CLIP")
      ->group("Project");
  addEffectOptions(*command, options->effect);
  addReadOptions(*command, options->read);
  addOutputOptions(*command, options->writing);
  addReportOptions(*command, options->report);
  addForceOption(*command, options->writing.force);
  addHostRoleOption(*command, options->work);
  addGeneralOptions(*command, options->work, options->console);
  command->callback([options, &work] { work = [options] { run(*options); }; });
}

}  // namespace cli
