// cli/info_command.cpp — `varilum4 info`: what a project or a clip holds.
#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <cstdio>
#include <memory>

#include "cli/commands.h"
#include "cli/options/clip_text.h"
#include "cli/options/output_options.h"
#include "cli/plot/plot_file.h"
#include "cli/project/project_file.h"
#include "cli/project/project_text.h"
#include "cli/shots/levels.h"
#include "cli/shots/shot_options.h"
#include "cli/shots/shot_text.h"
#include "cli/workbench.h"

namespace cli {
namespace {

struct InfoOptions {
  ClipOptions subject;
  ShotOptions shots;
  bool look = false;  ///< for shots, in a clip
  bool json = false;
  std::string plot;
  bool force = false;
  WorkOptions work;
  ConsoleOptions console;
};

void print(const std::string& text) {
  std::fputs(text.c_str(), stdout);
  std::fflush(stdout);
}

void showProject(const InfoOptions& options) {
  const Project project = readProject(options.subject.path);
  const Levels levels = levelsOf(project);
  if (!options.plot.empty()) {
    media::ClipInfo clip;
    clip.path = project.clip;
    clip.frameRate = {static_cast<int>(project.frameRate * 1000.0 + 0.5), 1000};
    writePlot(options.plot, clip, levels, findingsOf(project), {});
  }
  if (!options.console.quiet) {
    print(options.json ? projectJson(project, levels) : projectText(project, levels));
  }
}

void showClip(const InfoOptions& options) {
  if (options.plot.empty() && !options.look) {
    const media::ClipReader reader(options.subject.path, options.subject.read);
    if (!options.console.quiet) {
      print(options.json ? clipJson(reader.info()) : clipText(reader.info()));
    }
    return;
  }
  Console console(options.console);
  Workbench bench(options.subject, options.work, console);
  bench.analyze({}, options.shots);
  const media::ClipInfo& clip = bench.source().clip();
  const Levels levels = bench.levels();
  const std::vector<ShotFindings> shots = bench.found();
  if (!options.plot.empty()) writePlot(options.plot, clip, levels, shots, {});
  if (options.console.quiet) return;
  print(options.json ? clipJson(clip, shots, levels) : clipText(clip) + shotsText(shots, levels));
}

void run(const InfoOptions& options) {
  requirePlotWritable(options.plot, options.force);
  if (looksLikeProject(options.subject.path)) {
    showProject(options);
  } else if (options.subject.path.ends_with(".varilum")) {
    readProject(options.subject.path);  // says what is wrong with it
  } else {
    showClip(options);
  }
}

}  // namespace

void addInfoCommand(CLI::App& app, Work& work) {
  CLI::App* command =
      app.add_subcommand("info", "Show what a project holds of each frame, or what a clip is.");
  auto options = std::make_shared<InfoOptions>();
  command->add_option("PROJECT|CLIP", options->subject.path, "A project or a clip.")->required();
  command->add_flag("--json", options->json, "Print JSON.")->group("General");
  command
      ->add_option("--plot", options->plot,
                   "Draw input and desired brightness over all frames into this PNG; a clip is "
                   "analysed for it, as it is for options about shots.")
      ->type_name("PNG")
      ->group("General");
  addShotOptions(*command, options->shots);
  addForceOption(*command, options->force);
  addReadOptions(*command, options->subject.read);
  addGeneralOptions(*command, options->work, options->console);
  command->callback([command, options, &work] {
    for (const CLI::Option* option : command->get_options()) {
      if (option->get_group() == kShotGroup && option->count() > 0) options->look = true;
    }
    work = [options] { run(*options); };
  });
}

}  // namespace cli
