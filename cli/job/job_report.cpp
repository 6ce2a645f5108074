// cli/job/job_report.cpp — what came of a job, told to whoever started it.
#include "cli/job/job_report.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "cli/shots/shot_text.h"

namespace cli {
namespace {

// Beyond this many a list is for `info`.
constexpr std::size_t kMostOutliers = 20;

std::string changeText(const FlickerFigures& before, const FlickerFigures& after) {
  return fmt::format("flicker {:.2f} % -> {:.2f} %, jerk {:.2f} % -> {:.2f} %", before.flicker,
                     after.flicker, before.jerk, after.jerk);
}

nlohmann::ordered_json jsonOf(double before, double after) {
  return {{"before", before}, {"after", after}};
}

nlohmann::ordered_json jsonOf(const ShotResult& shot) {
  return {{"first", shot.found.frames.first()},
          {"last", shot.found.frames.last()},
          {"flickerPercent", jsonOf(shot.before.flicker, shot.after.flicker)},
          {"jerkPercent", jsonOf(shot.before.jerk, shot.after.jerk)},
          {"passedThrough", shot.passedThrough}};
}

std::int64_t untouchedFrames(const JobResult& job) {
  return std::count_if(job.frames.begin(), job.frames.end(),
                       [](const FrameResult& frame) { return frame.untouched; });
}

// Shots of which frames were rendered.
std::vector<std::size_t> renderedShots(const JobResult& job) {
  std::vector<std::size_t> shots;
  for (const FrameResult& frame : job.frames) {
    if (shots.empty() || shots.back() != frame.shot) shots.push_back(frame.shot);
  }
  return shots;
}

}  // namespace

void reportFindings(std::span<const ShotFindings> shots, Console& console) {
  const std::string summary = summaryOf(shots);
  if (!summary.empty()) console.note(summary);
  std::size_t outliers = 0;
  for (const ShotFindings& shot : shots) {
    for (const ShotOutlier& outlier : shot.outliers) {
      if (++outliers <= kMostOutliers) console.note(outlierText(outlier));
    }
  }
  if (outliers > kMostOutliers) {
    console.note(fmt::format("... and {} more; 'varilum4 info' lists those of a project.",
                             outliers - kMostOutliers));
  }
}

void warnOfWorseShot(const JobResult& job, std::size_t shot, const FlickerFigures& before,
                     const FlickerFigures& after, Console& console) {
  const bool one = job.shots.size() == 1;
  const std::string change = fmt::format("{:.2f} % before, {:.2f} % after; jerk {:.2f} %, {:.2f} %",
                                         before.flicker, after.flicker, before.jerk, after.jerk);
  const ShotFrames& frames = job.shots[shot].found.frames;
  const std::string which =
      fmt::format("shot {} (frames {}..{})", shot + 1, frames.first(), frames.last());
  if (job.shots[shot].passedThrough) {
    console.warn(
        fmt::format("Smoothing would make {} flicker more ({}); its pictures are left as they are.",
                    one ? "this clip" : which, change));
  } else {
    console.warn(fmt::format(
        "The output{} flickers more than the input ({}), as the levels given for it ask.",
        one ? "" : " of " + which, change));
  }
}

void reportRendering(const JobResult& job, const std::string& output, double totalSeconds,
                     Console& console) {
  const FlickerFigures before = figuresBefore(job);
  const FlickerFigures after = figuresAfter(job);
  const std::size_t frames = job.frames.size();
  const std::vector<std::size_t> shots = renderedShots(job);
  if (console.json()) {
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const std::size_t i : shots) list.push_back(jsonOf(job.shots[i]));
    const nlohmann::ordered_json line{{"event", "done"},
                                      {"output", output},
                                      {"frames", frames},
                                      {"framesUntouched", untouchedFrames(job)},
                                      {"seconds", totalSeconds},
                                      {"flickerPercent", jsonOf(before.flicker, after.flicker)},
                                      {"jerkPercent", jsonOf(before.jerk, after.jerk)},
                                      {"shots", list}};
    console.result(line.dump());
    return;
  }
  for (const std::size_t i : shots) {
    if (shots.size() == 1) break;
    const ShotResult& shot = job.shots[i];
    console.result(fmt::format("shot {}, frames {}..{}: {}{}", i + 1, shot.found.frames.first(),
                               shot.found.frames.last(), changeText(shot.before, shot.after),
                               shot.passedThrough ? ", left as it was" : ""));
  }
  console.result(fmt::format("{}{} frame{} in {:.1f} s, {}", output == "null:" ? "" : output + ": ",
                             frames, frames == 1 ? "" : "s", totalSeconds,
                             changeText(before, after)));
}

}  // namespace cli
