// cli/shots/shot_text.h — what was found about shots, in words.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <span>
#include <string>

#include "cli/shots/levels.h"
#include "cli/shots/shot_findings.h"

namespace cli {

/// "3 shots, 12 repeated frames, 4 outliers", of what there is; empty for one plain shot.
std::string summaryOf(std::span<const ShotFindings> shots);

/// A line a shot with its frames and figures, and a line an outlier, as `info` prints them.
/// `levels`: one a frame of the clip.
std::string shotsText(std::span<const ShotFindings> shots, const Levels& levels);
nlohmann::ordered_json shotJson(const ShotFindings& shot, const Levels& levels);

/// "Frame 77 is ... : corrected", with what it is and why.
std::string outlierText(const ShotOutlier& outlier);

/// "left, top .. right, bottom" of the live picture.
std::string matteText(const footage::Rectangle& matte);

}  // namespace cli
