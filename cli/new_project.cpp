// cli/new_project.cpp — the project of a clip as it lies on the workbench.
#include "cli/new_project.h"

#include "cli/commands.h"
#include "cli/fingerprint.h"

namespace cli {

Project newProject(Workbench& bench, const ClipOptions& clip, const std::filesystem::path& path) {
  namespace fs = std::filesystem;
  Project project;
  project.program = programVersion();
  project.clip = fs::absolute(clip.path).lexically_normal().string();
  const fs::path folder = fs::absolute(path).lexically_normal().parent_path();
  project.clipRelative = fs::path(project.clip).lexically_relative(folder).string();
  project.startNumber = clip.read.startNumber.value_or(-1);
  project.frameRate = bench.source().clip().frameRate.value();
  project.fingerprint = fingerprintOf(bench.source());
  project.layerFrames = bench.source().info().frameCount;
  project.effectVersion = bench.effect().version();
  project.target = toText(bench.target());
  for (std::size_t i = 0; i < bench.shotCount(); ++i) {
    Shot& shot = bench.shot(i);
    project.shots.push_back({shot.found(), shot.instance().save()});
  }
  return project;
}

}  // namespace cli
