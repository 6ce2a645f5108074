// cli/shot_findings.h — what was found out about each shot by looking at every frame once.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "cli/shot_frames.h"
#include "cli/shot_options.h"
#include "footage/frame_measure.h"
#include "footage/matte.h"
#include "footage/outliers.h"

namespace cli {

/// Frames that stand out from those around them, and what becomes of them.
struct ShotOutlier {
  footage::Outlier found;  ///< its frames count in the clip
  bool left = false;       ///< not deflickered, and out of every mean
};

struct ShotFindings {
  ShotFrames frames;
  std::vector<ShotOutlier> outliers;
  std::optional<footage::Rectangle> matte;  ///< the live picture between bars, in stored pixels
};

/// The shots of a clip, in order. `measures`: one a frame, at least one; `cuts`: the first frames
/// of the shots as the user lists them, looked at when the options say that they are listed.
std::vector<ShotFindings> findShots(std::span<const footage::FrameMeasure> measures,
                                    const ShotOptions& options, std::span<const std::int64_t> cuts);

}  // namespace cli
