// cli/project/new_project.cpp — the project of a clip as it lies on the workbench.
#include "cli/project/new_project.h"

#include <cstddef>
#include <cstring>
#include <vector>

#include "cli/commands.h"
#include "cli/project/fingerprint.h"
#include "stats/flat_image.h"

namespace cli {
namespace {

// The effect's image has its header as it was in memory, with where its arrays lay then. No reader
// looks at that, and it would make every file another one.
void clearAddresses(std::vector<std::byte>& image) {
  using State = varilum::SequenceState;
  if (!varilum::readFlatImage(image)) return;
  for (const std::size_t offset :
       {offsetof(State, frameStats), offsetof(State, histogramCache),
        offsetof(State, inputLuminance), offsetof(State, inputSpread),
        offsetof(State, desiredLuminance), offsetof(State, desiredSpread)}) {
    std::memset(image.data() + offset, 0, sizeof(varilum::StoredHandle));
  }
}

}  // namespace

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
    clearAddresses(project.shots.back().effect.sequenceData);
  }
  return project;
}

}  // namespace cli
