// cli/project_text.h — a project described, for people and for programs.
#pragma once

#include <string>

#include "cli/levels.h"
#include "cli/project_file.h"

namespace cli {

/// What it was made from, the settings, then a line a frame.
std::string projectText(const Project& project, const Levels& levels);
/// One object with an array of frames; a final newline.
std::string projectJson(const Project& project, const Levels& levels);

}  // namespace cli
