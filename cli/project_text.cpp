// cli/project_text.cpp — a project described, for people and for programs.
#include "cli/project_text.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "footage/flicker.h"

namespace cli {
namespace {

// Effect versions are packed: 13 bits of major (split), 4 of minor, 4 of bug fix.
std::string versionText(std::uint32_t packed) {
  const std::uint32_t major = ((packed >> 19) & 7U) | (((packed >> 26) & 15U) << 3);
  return fmt::format("{}.{}.{}", major, (packed >> 15) & 15U, (packed >> 11) & 15U);
}

// Desired over input: what 'linear' multiplies by. 1 where there is nothing to correct.
double gainOf(const Levels& levels, std::size_t frame) {
  return levels.input[frame] > 0.0 ? levels.desired[frame] / levels.input[frame] : 1.0;
}

}  // namespace

std::string projectText(const Project& project, const Levels& levels) {
  std::string text;
  const auto line = [&](const std::string& name, const std::string& value) {
    text += fmt::format("{:<32}{}\n", name, value);
  };
  line("clip", project.clip);
  line("size",
       fmt::format("{} x {} pixels", project.fingerprint.width, project.fingerprint.height));
  line("frames", fmt::format("{}", project.layerFrames));
  line("analysis", levels.status);
  line("effect", fmt::format("Varilum4 {}", versionText(project.effectVersion)));
  line("flicker, input", fmt::format("{:.2f} %", footage::flickerRms(levels.input)));
  line("flicker, desired", fmt::format("{:.2f} %", footage::flickerRms(levels.desired)));
  for (const auto& parameter : project.effect.parameters) {
    if (parameter.name.empty() || parameter.keys.empty() || parameter.name == " ") continue;
    std::string value;
    if (!parameter.constant) {
      value = fmt::format("{} keyframes", parameter.keys.size());
    } else if (!parameter.keys.front().opaque.empty()) {
      value = fmt::format("{} bytes", parameter.keys.front().opaque.size());
    } else if (parameter.keys.front().y != 0.0) {
      value = fmt::format("{:g}, {:g}", parameter.keys.front().value, parameter.keys.front().y);
    } else {
      value = fmt::format("{:g}", parameter.keys.front().value);
    }
    line(parameter.name, value);
  }
  text += fmt::format("\n{:>8} {:>10} {:>10} {:>10} {:>10} {:>8}\n", "frame", "input", "spread",
                      "desired", "spread", "gain");
  for (std::size_t i = 0; i < levels.input.size(); ++i) {
    text += fmt::format("{:>8} {:>10.4f} {:>10.4f} {:>10.4f} {:>10.4f} {:>8.4f}\n", i,
                        levels.input[i], levels.inputSpread[i], levels.desired[i],
                        levels.desiredSpread[i], gainOf(levels, i));
  }
  return text;
}

std::string projectJson(const Project& project, const Levels& levels) {
  using nlohmann::ordered_json;
  ordered_json parameters = ordered_json::array();
  for (const auto& parameter : project.effect.parameters) {
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
  ordered_json frames = ordered_json::array();
  for (std::size_t i = 0; i < levels.input.size(); ++i) {
    frames.push_back({{"frame", i},
                      {"analyzed", static_cast<bool>(levels.analyzed[i])},
                      {"inputLuminance", levels.input[i]},
                      {"inputSpread", levels.inputSpread[i]},
                      {"desiredLuminance", levels.desired[i]},
                      {"desiredSpread", levels.desiredSpread[i]},
                      {"gain", gainOf(levels, i)}});
  }
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
       {{"input", footage::flickerRms(levels.input)},
        {"desired", footage::flickerRms(levels.desired)}}},
      {"parameters", parameters},
      {"frames", frames}};
  return object.dump(1, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

}  // namespace cli
