// cli/demo_command.cpp — varilum4 demo: makes a flickering clip, steadies it, tells what was
// gained.
#include "cli/demo_command.h"

#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <chrono>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <system_error>
#include <vector>

#include "cli/demo/demo_clip.h"
#include "cli/demo/demo_flicker.h"
#include "cli/demo/demo_report.h"
#include "cli/demo/demo_scene.h"
#include "cli/error.h"
#include "cli/job/render_job.h"
#include "cli/options/output_options.h"
#include "cli/output_file.h"
#include "cli/plot/plot.h"
#include "cli/terminal/interrupt.h"

namespace cli {
namespace {

namespace fs = std::filesystem;

constexpr double kExpectedFactor = 10.0;

struct DemoFiles {
  explicit DemoFiles(const fs::path& folder)
      : flicker(folder / "flicker.mp4"),
        steady(folder / "steady.mp4"),
        plot(folder / "before_after.png"),
        csv(folder / "levels.csv") {}

  fs::path flicker;
  fs::path steady;
  fs::path plot;
  fs::path csv;
};

/// Makes the folder and checks every file before any work starts.
DemoFiles prepare(const DemoOptions& options) {
  const fs::path folder = options.folder;
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) {
    throw Failure(fmt::format("Cannot make the folder \"{}\": {}. Name another folder.",
                              folder.string(), error.message()));
  }
  DemoFiles files(folder);
  for (const fs::path* path : {&files.flicker, &files.steady, &files.plot, &files.csv}) {
    requireWritable(*path, options.force);
  }
  return files;
}

/// A phase of the progress display that also looks for Ctrl-C.
FrameDone phase(Console& console, const std::string& name) {
  console.progress().begin(name, kDemoFrames);
  return [&console](std::int64_t done) {
    throwIfInterrupted();
    console.progress().update(done);
  };
}

/// What the effect made of the clip.
struct Steadied {
  std::vector<double> desired;
  int smoothing = 0;
};

/// The way that the deflicker command goes, with nothing but defaults.
Steadied steady(const DemoFiles& files, const DemoOptions& options, Console& console) {
  Workbench bench({files.flicker.string(), {}}, options.work, console);
  OutputOptions output;
  output.force = options.force;
  Output steady(files.steady.string(), bench, output, std::nullopt, console);
  bench.analyze({}, {});
  renderTo(steady, bench, output, workerCount(options.work), {0, kDemoFrames - 1}, console);
  return {bench.levels().desired, readSettings(bench.shot(0).instance()).smoothingFrames};
}

PlotData plotOf(const DemoLevels& levels, const DemoFiles& files) {
  PlotData plot;
  plot.title = "Before and after";
  plot.clipName = files.flicker.filename().string();
  plot.input = levels.input;
  plot.desired = levels.desired;
  plot.output = levels.output;
  plot.frameRate = kDemoFrameRate;
  std::size_t first = 0;
  for (const FlickerPart& part : kFlickerParts) {
    plot.parts.push_back({first, first + kFramesPerPart - 1, std::string(part.name)});
    first += kFramesPerPart;
  }
  return plot;
}

void writeCsv(const fs::path& path, bool force, const std::string& text) {
  OutputFile file(path, force);
  file.write(std::as_bytes(std::span(text)));
  file.commit();
}

void reportJson(const DemoFiles& files, const std::vector<DemoFigures>& figures, Console& console) {
  nlohmann::ordered_json parts = nlohmann::ordered_json::array();
  for (const DemoFigures& f : figures) {
    parts.push_back(
        {{"kind", f.name},
         {"frames", {f.first, f.last}},
         {"changePercent",
          {{"before", f.changeInput},
           {"after", f.changeOutput},
           {"desired", f.changeDesired},
           {"original", f.changeClean}}},
         {"timesLess", f.factor()},
         {"exposureErrorPercent", {{"before", f.errorInput}, {"after", f.errorOutput}}}});
  }
  const nlohmann::ordered_json line{{"event", "demo"},
                                    {"flickering", files.flicker.string()},
                                    {"steady", files.steady.string()},
                                    {"plot", files.plot.string()},
                                    {"levels", files.csv.string()},
                                    {"parts", parts}};
  console.result(line.dump());
}

}  // namespace

void addDemoOptions(CLI::App& command, DemoOptions& options) {
  command.add_option("DIR", options.folder, "Folder to write into, made if missing.")
      ->capture_default_str()
      ->type_name("");
  addForceOption(command, options.force);
  addGeneralOptions(command, options.work, options.console);
}

void runDemo(const DemoOptions& options) {
  const auto start = std::chrono::steady_clock::now();
  Console console(options.console);
  const DemoFiles files = prepare(options);
  const DemoScene scene(kDemoWidth, kDemoHeight, kDemoFrames);
  const std::vector<double> gains = demoGains();
  WorkerPool pool(workerCount(options.work));

  DemoLevels levels;
  levels.clean = writeDemoClip(files.flicker, options.force, scene, gains, pool,
                               phase(console, "Making the clip"));
  console.progress().end();
  const Steadied steadied = steady(files, options, console);
  levels.desired = steadied.desired;

  const ClipMeasures before =
      measureDemoClip(files.flicker, scene, pool, phase(console, "Measuring the input"));
  const ClipMeasures after =
      measureDemoClip(files.steady, scene, pool, phase(console, "Measuring the output"));
  console.progress().end();
  levels.input = before.levels;
  levels.output = after.levels;
  for (const auto* curve : {&levels.input, &levels.desired, &levels.output}) {
    if (curve->size() == levels.clean.size()) continue;
    throw Failure(fmt::format("The demo's clips should have {} frames, but {} were found.",
                              levels.clean.size(), curve->size()));
  }

  const std::vector<DemoFigures> figures = demoFigures(levels);
  writeLuminancePlot(files.plot, plotOf(levels, files));
  writeCsv(files.csv, options.force, demoCsv(levels, gains));
  if (console.json()) {
    reportJson(files, figures, console);
  } else {
    for (const std::string& line : demoTable(figures)) console.result(line);
    console.result("");
    for (const std::string& sentence :
         demoRemainder(figures, steadied.smoothing, before.pictureError, after.pictureError)) {
      console.result(sentence);
    }
    console.result("");
    console.result(
        fmt::format("{}: {:.1f} times less frame-to-frame change in the per-frame random part.",
                    files.steady.string(), figures.front().factor()));
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    console.result(fmt::format("Flickering clip: {}   plot: {}   levels: {}   ({:.0f} s in all)",
                               files.flicker.string(), files.plot.string(), files.csv.string(),
                               seconds));
  }
  if (figures.front().factor() < kExpectedFactor) {
    throw Failure(fmt::format(
        "The per-frame random flicker fell {:.1f}-fold; at least {:.0f}-fold is expected of the "
        "effect with its default settings.",
        figures.front().factor(), kExpectedFactor));
  }
}

}  // namespace cli
