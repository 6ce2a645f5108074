// cli/render_job.cpp — an analysed clip written through the effect, with what was gained.
#include "cli/render_job.h"

#include <fmt/format.h>

#include <chrono>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>

#include "cli/error.h"
#include "cli/render_pipeline.h"
#include "footage/flicker.h"
#include "media/error.h"

namespace cli {
namespace {

constexpr int kGamma = 3;
// Differences below this, in percent, are rounding.
constexpr double kFlickerTolerance = 0.01;

// "Adjust for clipping" works in the classic render at 8 bits alone.
bool clippingActs(const EffectSettings& settings, host::Depth depth, Console& console) {
  if (!settings.adjustClipping) return false;
  if (settings.correctionMethod == kGamma) {
    console.warn("--adjust-clipping does not act with --correction-method gamma.");
    return false;
  }
  if (depth != host::Depth::bits8) {
    console.warn(fmt::format(
        "--adjust-clipping does not act at {} bits; add --depth 8 if it matters more than depth.",
        static_cast<int>(depth)));
    return false;
  }
  return true;
}

host::RenderPath choosePath(bool clippingActs, host::Role role) {
  return clippingActs || role == host::Role::premiere ? host::RenderPath::classic
                                                      : host::RenderPath::smart;
}

LevelArea areaOf(const EffectSettings& settings) {
  LevelArea area;
  area.favorBrighter = settings.favorBrighter;
  if (settings.useSubrect) {
    area.left = settings.rect[0];
    area.top = settings.rect[1];
    area.right = settings.rect[2];
    area.bottom = settings.rect[3];
  }
  return area;
}

// Frames without a level of their own: black ones and those not to be deflickered. The effect has
// nothing to base a correction on and would use that of whichever frame it rendered before.
std::vector<bool> withoutLevel(const Levels& levels) {
  std::vector<bool> without(levels.input.size());
  for (std::size_t i = 0; i < without.size(); ++i) without[i] = !(levels.input[i] > 0.0);
  return without;
}

// Renders as planned and hands the frames to the writer.
RenderReport writeFrames(media::ClipWriter& writer, Workbench& bench, const RenderPlan& plan,
                         std::string_view phase, Console& console) {
  RenderReport report;
  report.first = plan.first;
  Progress& progress = console.progress();
  progress.begin(std::string(phase), plan.last - plan.first + 1);
  renderFrames(bench.source(), plan, [&](RenderedFrame& frame) {
    writer.write(frame.picture);
    frame.picture = {};
    report.input.push_back(frame.inputLevel);
    report.output.push_back(frame.outputLevel);
    report.untouched += frame.untouched ? 1 : 0;
    progress.update(static_cast<std::int64_t>(report.input.size()));
  });
  progress.end();
  if (report.input.empty()) throw Failure("No frame of the clip could be decoded.");
  return report;
}

// What was steady before can come out less so: corrections below one level turn into rounding.
bool flickersMore(const RenderReport& report) {
  return footage::flickerRms(report.output) > footage::flickerRms(report.input) + kFlickerTolerance;
}

std::string flickerChange(const RenderReport& report) {
  return fmt::format("{:.2f} % before, {:.2f} % after", footage::flickerRms(report.input),
                     footage::flickerRms(report.output));
}

}  // namespace

Output::Output(std::string path, Workbench& bench, const OutputOptions& options,
               const std::optional<media::FrameRange>& frames, Console& console)
    : path_(std::move(path)), bench_(bench), options_(options.write) {
  options_.overwrite = options.force;
  options_.frames = frames;
  try {
    restart();
  } catch (const media::Error& error) {
    if (error.problem() != media::Problem::exists) throw;
    throw Failure(fmt::format(
        "{} is there already; choose another name, or add --force to replace it.", path_));
  }
  for (const std::string& note : writer_->notes()) console.note(note);
}

void Output::restart() {
  writer_.reset();
  writer_.emplace(path_, bench_.source().reader(), options_);
}

RenderReport renderTo(Output& output, Workbench& bench, const OutputOptions& options, int workers,
                      media::FrameRange frames, Console& console) {
  const auto start = std::chrono::steady_clock::now();
  const EffectSettings settings = readSettings(bench.instance());
  const host::Role role = bench.host().role();
  const host::Depth depth = renderDepth(options, bench.source().clip(), role);
  if (role == host::Role::premiere && bench.source().clip().workingDepth != media::Depth::eight) {
    console.warn("The clip has more than the 8 bits that --host-role premiere renders with.");
  }
  RenderPlan plan;
  plan.first = frames.first;
  plan.last = frames.last;
  plan.depth = depth;
  plan.parts = {{&bench.instance(), choosePath(clippingActs(settings, depth, console), role)}};
  plan.workers = workers;
  plan.route = [alone = withoutLevel(bench.levels())](std::int64_t frame) {
    if (alone[static_cast<std::size_t>(frame)]) return FrameRoute{};
    return FrameRoute{0, static_cast<std::int32_t>(frame), {}};
  };
  plan.area = areaOf(settings);

  RenderReport report = writeFrames(output.writer(), bench, plan, "Rendering", console);
  if (flickersMore(report)) {
    if (!settings.keyframes) {
      console.warn(fmt::format(
          "Smoothing would make this clip flicker more ({}); its pictures are left as they are.",
          flickerChange(report)));
      output.restart();
      plan.route = [](std::int64_t) { return FrameRoute{}; };
      report = writeFrames(output.writer(), bench, plan, "Copying", console);
    } else {
      console.warn(
          fmt::format("The output flickers more than the input ({}), as the levels given "
                      "for it ask.",
                      flickerChange(report)));
    }
  }
  output.writer().finish();
  report.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();

  const std::int64_t total = frames.last - frames.first + 1;
  if (static_cast<std::int64_t>(report.input.size()) < total) {
    console.warn(fmt::format("The clip breaks off: {} of {} frames were written.",
                             report.input.size(), total));
  }
  for (const std::string& warning : bench.source().reader().warnings()) console.warn(warning);
  return report;
}

void reportRendering(const RenderReport& report, const std::string& output, double totalSeconds,
                     Console& console) {
  const double flickerBefore = footage::flickerRms(report.input);
  const double flickerAfter = footage::flickerRms(report.output);
  const double jerkBefore = footage::jerk(report.input);
  const double jerkAfter = footage::jerk(report.output);
  const std::size_t frames = report.input.size();
  if (console.json()) {
    const nlohmann::ordered_json line{
        {"event", "done"},
        {"output", output},
        {"frames", frames},
        {"framesUntouched", report.untouched},
        {"seconds", totalSeconds},
        {"flickerPercent", {{"before", flickerBefore}, {"after", flickerAfter}}},
        {"jerkPercent", {{"before", jerkBefore}, {"after", jerkAfter}}}};
    console.result(line.dump());
    return;
  }
  console.result(
      fmt::format("{}{} frame{} in {:.1f} s, flicker {:.2f} % -> {:.2f} %, jerk {:.2f} % -> "
                  "{:.2f} %",
                  output == "null:" ? "" : output + ": ", frames, frames == 1 ? "" : "s",
                  totalSeconds, flickerBefore, flickerAfter, jerkBefore, jerkAfter));
}

}  // namespace cli
