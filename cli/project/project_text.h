// cli/project/project_text.h — a project described, for people and for programs.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cli/project/project_file.h"
#include "cli/shots/levels.h"

namespace cli {

/// What is known of each shot.
std::vector<ShotFindings> findingsOf(const Project& project);
/// One level a frame of what was analysed. Throws Failure when the shots and their data do not fit.
Levels levelsOf(const Project& project);
/// The effect's version as people write it.
std::string versionText(std::uint32_t packed);

/// What it was made from, the settings, then a line a frame.
std::string projectText(const Project& project, const Levels& levels);
/// One object with an array of frames; a final newline.
std::string projectJson(const Project& project, const Levels& levels);

}  // namespace cli
