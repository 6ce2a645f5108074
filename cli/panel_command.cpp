// cli/panel_command.cpp — `varilum4 panel`: the effect's own panel, painted.
#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "cli/commands.h"
#include "cli/error.h"
#include "cli/options/output_options.h"
#include "cli/output_file.h"
#include "cli/panel_picture.h"
#include "cli/project/project_clip.h"
#include "cli/project/project_file.h"
#include "cli/same_file.h"
#include "cli/workbench.h"

namespace cli {
namespace {

struct PanelCommandOptions {
  std::string project;
  std::string output;
  std::string folder;
  std::string input;
  std::int32_t frame = 0;
  double scale = 1.0;
  int width = kPictureWidth;
  double fontSize = 12.0;
  bool zoom = false;
  bool red = false;
  bool green = false;
  bool blue = false;
  bool force = false;
  EffectOptions effect;
  WorkOptions work;
  ConsoleOptions console;
};

void setGraphs(host::Instance& instance, const PanelCommandOptions& options) {
  const auto tick = [&](const char* parameter, bool on) {
    if (on) instance.param(parameter).set(1.0);
  };
  tick("Zoom luminance scale", options.zoom);
  tick("Show red histogram", options.red);
  tick("Show green histogram", options.green);
  tick("Show blue histogram", options.blue);
}

host::Panel openPanel(Shot& shot, const PanelCommandOptions& options) {
  setGraphs(shot.instance(), options);
  host::PanelOptions look;
  look.width = options.width;
  look.fontSize = static_cast<float>(options.fontSize);
  return host::Panel(shot.instance(), look);
}

// The panel of a shot with the time cursor on this frame of the clip, wherever the shot ends.
void drawAt(Shot& shot, host::Panel& panel, std::int32_t frame) {
  const ShotFrames& frames = shot.frames();
  if (frames.holds(frame)) {
    panel.followInstance();
    shot.instance().goTo(frames.pictureOf(frame));
  } else {
    const std::int64_t beyond = frame - frames.last() + frames.pictureCount() - 1;
    panel.placeCursor(
        static_cast<std::int32_t>(frame < frames.first() ? frame - frames.first() : beyond));
  }
  panel.drawUntilReady();
}

std::filesystem::path pictureOf(const std::string& folder, std::int32_t frame) {
  return std::filesystem::path(folder) / fmt::format("panel.{:05}.png", frame);
}

void drawAll(Workbench& bench, const PanelCommandOptions& options, Console& console) {
  std::filesystem::create_directories(options.folder);
  console.progress().begin("Painting", bench.source().info().frameCount);
  for (std::size_t i = 0; i < bench.shotCount(); ++i) {
    Shot& shot = bench.shot(i);
    host::Panel panel = openPanel(shot, options);
    const auto last = static_cast<std::int32_t>(shot.frames().last());
    for (auto frame = static_cast<std::int32_t>(shot.frames().first()); frame <= last; ++frame) {
      drawAt(shot, panel, frame);
      savePanel(panel, pictureOf(options.folder, frame), options.scale, options.force);
      console.progress().update(frame + 1);
    }
    panel.close();
  }
  console.progress().end();
}

void report(const PanelCommandOptions& options, std::int32_t pictures, Console& console) {
  const std::string& where = options.folder.empty() ? options.output : options.folder;
  if (console.json()) {
    console.result(
        nlohmann::ordered_json{{"event", "done"}, {"output", where}, {"pictures", pictures}}
            .dump());
  } else if (!options.folder.empty()) {
    console.result(fmt::format("{}: {} pictures", where, pictures));
  }
}

void run(const PanelCommandOptions& options) {
  if (options.output.empty() == options.folder.empty()) {
    throw UsageError("Say where to write: one of --output and --all-frames.");
  }
  if (!options.output.empty()) {
    refuseSameFile(options.project, options.output);
    requireWritable(options.output, options.force);
  }
  const Project project = readProject(options.project);
  const ClipOptions clip = locateClip(options.project, project, options.input);
  Console console(options.console);
  Workbench bench(clip, options.work, console);
  requireSameClip(project, bench.source());
  bench.open(project);
  bench.adjust(options.effect);
  if (!options.folder.empty()) {
    drawAll(bench, options, console);
    report(options, project.layerFrames, console);
    return;
  }
  Shot& shot = bench.shot(bench.shotAt(options.frame));
  host::Panel panel = openPanel(shot, options);
  drawAt(shot, panel, options.frame);
  savePanel(panel, options.output, options.scale, options.force);
  report(options, 1, console);
  panel.close();
}

}  // namespace

void addPanelCommand(CLI::App& app, Work& work) {
  CLI::App* command = app.add_subcommand(
      "panel", "Paint the effect's panel, histogram and luminance graph, from a project.");
  auto options = std::make_shared<PanelCommandOptions>();
  command->add_option("PROJECT", options->project, "The project, such as shot.varilum.")
      ->required();
  command->add_option("-o,--output", options->output, "The picture to write.")->type_name("PNG");
  command
      ->add_option(
          "--frame", options->frame,
          "Where the time cursor stands, in the clip; the panel is that of its shot. It may stand "
          "outside the clip. Default: 0.")
      ->type_name("FRAME");
  command
      ->add_option("--all-frames", options->folder,
                   "Write a picture of each frame into this folder, as panel.00000.png and on.")
      ->type_name("FOLDER");
  command->add_option("--input", options->input, "The clip, if it is no longer where it was.")
      ->type_name("CLIP");
  constexpr const char* kLook = "Panel";
  command->add_flag("--zoom", options->zoom, "Fit the luminance scale to the clip's levels.")
      ->group(kLook);
  command->add_flag("--red", options->red, "Add the histogram of red.")->group(kLook);
  command->add_flag("--green", options->green, "Add the histogram of green.")->group(kLook);
  command->add_flag("--blue", options->blue, "Add the histogram of blue.")->group(kLook);
  command
      ->add_option("--scale", options->scale,
                   "Pixels of the picture for each of the panel. Default: 1.")
      ->check(CLI::Range(0.25, 16.0))
      ->type_name("FACTOR")
      ->group(kLook);
  command->add_option("--width", options->width, "Width of the panel. Default: 560.")
      ->check(CLI::Range(100, 4000))
      ->type_name("PIXELS")
      ->group(kLook);
  command->add_option("--font-size", options->fontSize, "Size of the panel's texts. Default: 12.")
      ->check(CLI::Range(6.0, 40.0))
      ->type_name("PIXELS")
      ->group(kLook);
  addEffectOptions(*command, options->effect);
  addForceOption(*command, options->force);
  addGeneralOptions(*command, options->work, options->console);
  command->callback([options, &work] { work = [options] { run(*options); }; });
}

}  // namespace cli
