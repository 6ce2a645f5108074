// cli/shots/level_match.cpp — a curve of levels handed to the effect so that the picture really
// takes it.
#include "cli/shots/level_match.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "cli/options/effect_parameters.h"
#include "cli/shots/curve_probe.h"

namespace cli {
namespace {

constexpr int kRounds = 4;
constexpr double kNearEnough = 0.005;  // levels
// A keyframe far from where proportion would put it means that the picture cannot get there.
constexpr double kFarthest = 1.5;

struct Match {
  double key = 0.0;   // to be tried
  double best = 0.0;  // of those tried
  double error = std::numeric_limits<double>::infinity();
};

}  // namespace

std::vector<double> levelsToFollow(Shot& shot) {
  std::vector<double> levels = shot.levels().input;
  for (std::size_t p = 0; p < shot.lumas.size(); ++p) {
    if (levels[p] > 0.0) levels[p] = shot.lumas[p].mean;
  }
  for (const ShotOutlier& outlier : shot.found().outliers) {
    const ShotFrames& frames = shot.frames();
    const std::int32_t last = frames.pictureOf(outlier.found.last);
    for (std::int32_t p = frames.pictureOf(outlier.found.first); p <= last; ++p) {
      levels[static_cast<std::size_t>(p)] = 0.0;
    }
  }
  return levels;
}

void followLumas(host::Effect& effect, Shot& shot, std::span<const double> wanted,
                 std::span<const double> spreads, host::Depth depth, host::RenderPath path) {
  if (shot.lumas.empty()) return followLevels(wanted, spreads, shot.instance());
  const std::vector<double> input = shot.levels().input;
  std::vector<Match> matches(wanted.size());
  std::vector<double> keys(wanted.begin(), wanted.end());
  // What the effect calls a level of 1.
  const auto scale = [&](std::size_t p) {
    return input[p] > 0.0 && shot.lumas[p].mean > 0.0 ? input[p] / shot.lumas[p].mean : 0.0;
  };
  for (std::size_t p = 0; p < keys.size(); ++p) {
    if (scale(p) > 0.0) keys[p] *= scale(p);
  }
  followLevels(keys, spreads, shot.instance());
  for (int round = 0; round < kRounds; ++round) {
    CurveProbe probe(effect, shot, depth, path);
    double worst = 0.0;
    for (std::size_t p = 0; p < keys.size(); ++p) {
      if (!(scale(p) > 0.0)) continue;
      const double luma =
          footage::lumaBehind(shot.lumas[p], probe.at(static_cast<std::int32_t>(p)));
      const double missing = wanted[p] - luma;
      Match& match = matches[p];
      if (std::abs(missing) < match.error) match = {0.0, keys[p], std::abs(missing)};
      const double proportional = wanted[p] * scale(p);
      match.key = std::clamp(keys[p] + missing * scale(p), proportional / kFarthest,
                             proportional * kFarthest);
      worst = std::max(worst, std::abs(missing));
    }
    if (worst < kNearEnough) return;
    for (std::size_t p = 0; p < keys.size(); ++p) {
      if (scale(p) > 0.0) keys[p] = round + 1 < kRounds ? matches[p].key : matches[p].best;
    }
    followLevels(keys, spreads, shot.instance());
  }
}

}  // namespace cli
