// cli/shots/target.h — which course the levels of a shot are to take, as --target says it.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "cli/shots/shot_frames.h"
#include "footage/targets.h"

namespace cli {

struct Target {
  enum class Kind : std::uint8_t {
    smoothing,
    loess,
    median,
    savitzkyGolay,
    constant,
    ramp,
    points
  };

  Kind kind = Kind::smoothing;
  std::int64_t from = 0;  ///< ramp: frames of the clip, in either order
  std::int64_t to = 0;
  std::vector<footage::LevelPoint> points;  ///< of the clip, rising by frame
};

/// Whether the curve is worked out from the levels around each frame, or from all of them: it has
/// to be again when these or the number of smoothing frames change.
bool isCurve(const Target& target) noexcept;

/// What --help says: each kind, and what it is good for.
std::string targetHelp();

/// "smoothing", "loess", "median", "savitzky-golay", "constant", "ramp:A..B" or a file of points,
/// each a line with a frame and a level. Throws UsageError or Failure, naming what is wrong.
Target parseTarget(const std::string& text);

/// What a project keeps of a target: as parseTarget() reads it, and "points" for points, which it
/// keeps as keyframes.
std::string toText(const Target& target);
/// The target of a project; points have none. Throws UsageError for any other text.
Target targetFromProject(const std::string& text);

/// The level wanted of each picture of a shot. `levels`: input level of each of its pictures, 0 or
/// less where there is none; `radius`: frames looked at on either side. Nothing for smoothing,
/// which is the effect's own.
std::vector<double> targetLevels(const Target& target, const ShotFrames& frames,
                                 std::span<const double> levels, int radius);

}  // namespace cli
