// cli/project/project_clip.h — finding the clip that a project was made from.
#pragma once

#include <filesystem>
#include <string>

#include "cli/job/clip_source.h"
#include "cli/project/project_file.h"

namespace cli {

/// The clip to open: `given` if not empty, else where the project says, seen from its folder first
/// and absolutely then. Throws Failure when there is none.
ClipOptions locateClip(const std::filesystem::path& projectPath, const Project& project,
                       const std::string& given);

/// Throws Failure, saying what differs, when the open clip is not the project's.
void requireSameClip(const Project& project, ClipSource& source);

}  // namespace cli
