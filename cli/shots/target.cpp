// cli/shots/target.cpp — which course the levels of a shot are to take.
#include "cli/shots/target.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>

#include "cli/error.h"
#include "cli/options/frame_span.h"
#include "cli/options/list_file.h"

namespace cli {
namespace {

struct Row {
  Target::Kind kind;
  const char* name;
  const char* goodFor;
};

constexpr Row kRows[] = {
    {Target::Kind::smoothing, "smoothing", "the plain mean of the frames around: for most flicker"},
    {Target::Kind::loess, "loess",
     "a line fitted to them, the nearest weighing most: smoother than 'smoothing'"},
    {Target::Kind::median, "median",
     "their median: for clips with flashes or many frames far off, which it does not follow"},
    {Target::Kind::savitzkyGolay, "savitzky-golay",
     "a curve fitted to them: for light that rises and falls, such as sunsets and pans"},
    {Target::Kind::constant, "constant",
     "one level for the whole shot: for light that ought not to change at all"},
    {Target::Kind::ramp, "ramp:A..B",
     "straight from the level of frame A to that of frame B: for day to night"},
    {Target::Kind::points, "FILE",
     "straight from point to point, each a line with frame and level: for a course of your own"}};

constexpr std::string_view kRamp = "ramp:";
// What a project calls points: they are kept as keyframes.
constexpr const char* kPoints = "points";

Target parseRamp(const std::string& text) {
  Target target;
  target.kind = Target::Kind::ramp;
  const auto span = parseFrameSpan(text.substr(kRamp.size()));
  if (!span || !span->last || *span->last <= span->first) {
    throw UsageError(
        fmt::format("--target: '{}' is no ramp between two frames such as ramp:0..250.", text));
  }
  target.from = span->first;
  target.to = *span->last;
  return target;
}

std::optional<Target> parseNamed(const std::string& text) {
  if (text.starts_with(kRamp)) return parseRamp(text);
  for (const Row& row : kRows) {
    if (row.kind == Target::Kind::ramp || row.kind == Target::Kind::points) continue;
    if (text == row.name) return Target{row.kind, 0, 0, {}};
  }
  return {};
}

std::optional<double> parseLevel(const std::string& text) {
  double level = 0.0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, level);
  if (error != std::errc() || stop != end || !(level >= 0.0 && level <= 255.0)) return {};
  return level;
}

Target readPoints(const std::string& path) {
  Target target;
  target.kind = Target::Kind::points;
  for (const ListLine& line : readListFile(path, "--target")) {
    const bool two = line.fields.size() == 2;
    const auto frame = two ? parseFrame(line.fields[0]) : std::nullopt;
    const auto level = two ? parseLevel(line.fields[1]) : std::nullopt;
    if (!frame || !level) {
      throw UsageError(fmt::format(
          "--target: line {} of {} is not a frame and a level from 0 to 255.", line.number, path));
    }
    if (!target.points.empty() && target.points.back().frame >= *frame) {
      throw UsageError(fmt::format("--target: frame {} in line {} of {} does not come after {}.",
                                   *frame, line.number, path, target.points.back().frame));
    }
    target.points.push_back({*frame, *level});
  }
  if (target.points.empty()) {
    throw UsageError(fmt::format("--target: {} holds no frame with a level.", path));
  }
  return target;
}

}  // namespace

bool isCurve(const Target& target) noexcept {
  return target.kind != Target::Kind::smoothing && target.kind != Target::Kind::points;
}

std::string targetHelp() {
  std::string text;
  for (const Row& row : kRows) {
    text += fmt::format("{}'{}', {}", text.empty() ? "" : "; ", row.name, row.goodFor);
  }
  return text;
}

Target parseTarget(const std::string& text) {
  if (const auto named = parseNamed(text)) return *named;
  std::error_code ignored;
  if (std::filesystem::exists(text, ignored)) return readPoints(text);
  std::string names;
  for (const Row& row : kRows) {
    if (row.kind != Target::Kind::points) names += fmt::format("{}, ", row.name);
  }
  throw UsageError(fmt::format("--target: '{}' is none of: {}and no file.", text, names));
}

Target targetFromProject(const std::string& text) {
  if (text == kPoints) return Target{Target::Kind::points, 0, 0, {}};
  if (const auto named = parseNamed(text)) return *named;
  throw UsageError(fmt::format("'{}' is no target.", text));
}

std::string toText(const Target& target) {
  if (target.kind == Target::Kind::points) return kPoints;
  if (target.kind == Target::Kind::ramp) return fmt::format("ramp:{}..{}", target.from, target.to);
  const auto row = std::find_if(std::begin(kRows), std::end(kRows),
                                [&](const Row& r) { return r.kind == target.kind; });
  return row->name;
}

std::vector<double> targetLevels(const Target& target, const ShotFrames& frames,
                                 std::span<const double> levels, int radius) {
  switch (target.kind) {
    case Target::Kind::loess:
      return footage::loessTarget(levels, radius);
    case Target::Kind::median:
      return footage::medianTarget(levels, radius);
    case Target::Kind::savitzkyGolay:
      return footage::savitzkyGolayTarget(levels, radius);
    case Target::Kind::constant:
      return footage::constantTarget(levels);
    case Target::Kind::ramp: {
      // Straight in the clip's time, in which a held picture lasts.
      std::vector<double> shown;
      for (std::int64_t f = frames.first(); f <= frames.last(); ++f) {
        shown.push_back(levels[static_cast<std::size_t>(frames.pictureOf(f))]);
      }
      const std::vector<double> ramp = footage::rampTarget(shown, target.from - frames.first(),
                                                           target.to - frames.first(), radius);
      std::vector<double> wanted;
      for (std::int32_t p = 0; p < frames.pictureCount(); ++p) {
        wanted.push_back(ramp[static_cast<std::size_t>(frames.frameOf(p) - frames.first())]);
      }
      return wanted;
    }
    case Target::Kind::smoothing:
    case Target::Kind::points:
      break;
  }
  return {};
}

}  // namespace cli
