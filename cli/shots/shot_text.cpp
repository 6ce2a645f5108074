// cli/shots/shot_text.cpp — what was found about shots, in words.
#include "cli/shots/shot_text.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "cli/job/job_result.h"

namespace cli {
namespace {

std::string counted(std::size_t count, const char* one, const char* many) {
  return fmt::format("{} {}", count, count == 1 ? one : many);
}

// The levels of a shot's frames.
std::span<const double> within(const ShotFrames& shot, std::span<const double> clip) {
  return clip.subspan(static_cast<std::size_t>(shot.first()),
                      static_cast<std::size_t>(shot.count()));
}

std::string shotLine(const ShotFindings& shot, const Levels& levels) {
  const FlickerFigures input = figuresOf(within(shot.frames, levels.input));
  const FlickerFigures desired = figuresOf(within(shot.frames, levels.desired));
  std::string text = fmt::format(
      "frames {}..{}, flicker {:.2f} % (desired {:.2f} %), jerk {:.2f} % (desired {:.2f} %)",
      shot.frames.first(), shot.frames.last(), input.flicker, desired.flicker, input.jerk,
      desired.jerk);
  const std::size_t repeated = shot.frames.duplicates().size();
  if (repeated > 0) text += fmt::format(", {} repeated", repeated);
  if (shot.matte) text += fmt::format(", live picture {}", matteText(*shot.matte));
  return text;
}

}  // namespace

std::string summaryOf(std::span<const ShotFindings> shots) {
  std::size_t repeated = 0;
  std::size_t outliers = 0;
  for (const ShotFindings& shot : shots) {
    repeated += shot.frames.duplicates().size();
    outliers += shot.outliers.size();
  }
  std::string text;
  const auto add = [&](bool there, const std::string& part) {
    if (there) text += fmt::format("{}{}", text.empty() ? "" : ", ", part);
  };
  add(shots.size() > 1, counted(shots.size(), "shot", "shots"));
  add(repeated > 0, counted(repeated, "repeated frame", "repeated frames"));
  add(outliers > 0, counted(outliers, "outlier", "outliers"));
  return text.empty() ? text : "Found: " + text + ".";
}

std::string shotsText(std::span<const ShotFindings> shots, const Levels& levels) {
  std::string text;
  for (std::size_t i = 0; i < shots.size(); ++i) {
    text += fmt::format("{:<32}{}\n", fmt::format("shot {}", i + 1), shotLine(shots[i], levels));
  }
  for (const ShotFindings& shot : shots) {
    for (const ShotOutlier& outlier : shot.outliers) {
      text += fmt::format("{:<32}{}\n", "outlier", outlierText(outlier));
    }
  }
  return text;
}

nlohmann::ordered_json shotJson(const ShotFindings& shot, const Levels& levels) {
  const FlickerFigures input = figuresOf(within(shot.frames, levels.input));
  const FlickerFigures desired = figuresOf(within(shot.frames, levels.desired));
  nlohmann::ordered_json outliers = nlohmann::ordered_json::array();
  for (const ShotOutlier& outlier : shot.outliers) {
    outliers.push_back({{"first", outlier.found.first},
                        {"last", outlier.found.last},
                        {"kind", footage::name(outlier.found.kind)},
                        {"why", footage::reason(outlier.found.kind)},
                        {"ratio", outlier.found.ratio},
                        {"left", outlier.left}});
  }
  nlohmann::ordered_json value{
      {"first", shot.frames.first()},
      {"last", shot.frames.last()},
      {"flickerPercent", {{"input", input.flicker}, {"desired", desired.flicker}}},
      {"jerkPercent", {{"input", input.jerk}, {"desired", desired.jerk}}},
      {"repeated", shot.frames.duplicates()},
      {"outliers", outliers}};
  if (shot.matte) {
    value["picture"] = {shot.matte->left, shot.matte->top, shot.matte->right, shot.matte->bottom};
  }
  return value;
}

std::string outlierText(const ShotOutlier& outlier) {
  const footage::Outlier& found = outlier.found;
  const std::string frames = found.first == found.last
                                 ? fmt::format("Frame {}", found.first)
                                 : fmt::format("Frames {}..{}", found.first, found.last);
  return fmt::format("{}: {} (x {:.2f}), {}: {}.", frames, footage::name(found.kind), found.ratio,
                     footage::reason(found.kind), outlier.left ? "left as it is" : "corrected");
}

std::string matteText(const footage::Rectangle& matte) {
  return fmt::format("{},{},{},{}", matte.left, matte.top, matte.right, matte.bottom);
}

}  // namespace cli
