// cli/project/project_json.cpp — a project described for programs.
#include <nlohmann/json.hpp>
#include <vector>

#include "cli/job/job_result.h"
#include "cli/project/project_text.h"
#include "cli/shots/shot_text.h"

namespace cli {
namespace {

using nlohmann::ordered_json;

ordered_json parametersJson(const ProjectShot& shot) {
  ordered_json parameters = ordered_json::array();
  for (const auto& parameter : shot.effect.parameters) {
    if (parameter.keys.empty()) continue;
    ordered_json keys = ordered_json::array();
    for (const auto& key : parameter.keys) {
      keys.push_back({{"frame", key.frame}, {"value", key.value}, {"y", key.y}});
    }
    parameters.push_back({{"id", parameter.id},
                          {"name", parameter.name},
                          {"constant", parameter.constant},
                          {"keys", keys}});
  }
  return parameters;
}

ordered_json projectShotJson(const ProjectShot& shot, const Levels& levels) {
  ordered_json value = shotJson(shot.found, levels);
  value["parameters"] = parametersJson(shot);
  return value;
}

ordered_json framesJson(const Project& project, const Levels& levels) {
  ordered_json list = ordered_json::array();
  for (std::size_t shot = 0; shot < project.shots.size(); ++shot) {
    const ShotFrames& frames = project.shots[shot].found.frames;
    for (std::int64_t frame = frames.first(); frame <= frames.last(); ++frame) {
      const auto i = static_cast<std::size_t>(frame);
      list.push_back({{"frame", frame},
                      {"shot", shot + 1},
                      {"original", frames.originalOf(frame)},
                      {"analyzed", static_cast<bool>(levels.analyzed[i])},
                      {"inputLuminance", levels.input[i]},
                      {"inputSpread", levels.inputSpread[i]},
                      {"desiredLuminance", levels.desired[i]},
                      {"desiredSpread", levels.desiredSpread[i]},
                      {"gain", levels.gain(i)}});
    }
  }
  return list;
}

}  // namespace

std::string projectJson(const Project& project, const Levels& levels) {
  const std::vector<ShotFindings> found = findingsOf(project);
  ordered_json shots = ordered_json::array();
  for (const ProjectShot& shot : project.shots) shots.push_back(projectShotJson(shot, levels));
  const ordered_json object{
      {"project", {{"program", project.program}, {"effect", versionText(project.effectVersion)}}},
      {"clip",
       {{"path", project.clip},
        {"width", project.fingerprint.width},
        {"height", project.fingerprint.height},
        {"frames", project.fingerprint.frames},
        {"frameRate", project.frameRate}}},
      {"analysisComplete", levels.complete},
      {"status", levels.status},
      {"flickerPercent",
       {{"input", figuresOf(levels.input, found).flicker},
        {"desired", figuresOf(levels.desired, found).flicker}}},
      {"target", project.target},
      {"shots", shots},
      {"frames", framesJson(project, levels)}};
  return object.dump(1, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

}  // namespace cli
