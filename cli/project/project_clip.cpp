// cli/project/project_clip.cpp — finding the clip that a project was made from.
#include "cli/project/project_clip.h"

#include <fmt/format.h>

#include <system_error>

#include "cli/error.h"
#include "cli/project/fingerprint.h"

namespace cli {
namespace {

// Patterns of numbered pictures name no file themselves; their folder must do.
bool mayBeThere(const std::filesystem::path& path) {
  std::error_code ignored;
  if (std::filesystem::exists(path, ignored)) return true;
  const bool pattern = path.filename().string().find_first_of("%*") != std::string::npos;
  return pattern && std::filesystem::is_directory(path.parent_path(), ignored);
}

}  // namespace

ClipOptions locateClip(const std::filesystem::path& projectPath, const Project& project,
                       const std::string& given) {
  ClipOptions clip;
  if (project.startNumber >= 0) clip.read.startNumber = project.startNumber;
  if (!given.empty()) {
    clip.path = given;
    return clip;
  }
  const auto folder = std::filesystem::absolute(projectPath).parent_path();
  const auto beside = (folder / project.clipRelative).lexically_normal();
  if (!project.clipRelative.empty() && mayBeThere(beside)) {
    clip.path = beside.string();
  } else if (mayBeThere(project.clip)) {
    clip.path = project.clip;
  } else {
    throw Failure(
        fmt::format("The project's clip {} is not there; name it with --input.", project.clip));
  }
  return clip;
}

void requireSameClip(const Project& project, ClipSource& source) {
  const std::string difference = differenceBetween(project.fingerprint, fingerprintOf(source));
  if (difference.empty()) return;
  throw Failure(
      fmt::format("{} is not the clip that the project was made from: {}. Name the right "
                  "one with --input, or analyse this one.",
                  source.clip().path, difference));
}

}  // namespace cli
