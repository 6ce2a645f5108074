// cli/project/new_project.h — the project of a clip as it lies on the workbench.
#pragma once

#include <filesystem>

#include "cli/project/project_file.h"
#include "cli/workbench.h"

namespace cli {

/// What to write to `path`; the clip's path is also kept as seen from there.
Project newProject(Workbench& bench, const ClipOptions& clip, const std::filesystem::path& path);

}  // namespace cli
