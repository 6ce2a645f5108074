// cli/project/project_text.cpp — a project described, for people and for programs.
#include "cli/project/project_text.h"

#include <fmt/format.h>

#include <vector>

#include "cli/job/job_result.h"
#include "cli/shots/shot_text.h"

namespace cli {
namespace {

std::string valueText(const host::SavedParameter& parameter) {
  const host::SavedKeyframe& value = parameter.keys.front();
  if (!parameter.constant) return fmt::format("{} keyframes", parameter.keys.size());
  if (!value.opaque.empty()) return fmt::format("{} bytes", value.opaque.size());
  if (value.y != 0.0) return fmt::format("{:g}, {:g}", value.value, value.y);
  return fmt::format("{:g}", value.value);
}

// A parameter as the shots have it: the one value of all, or one after the other.
std::string valuesText(const Project& project, std::size_t index) {
  std::string text;
  bool same = true;
  for (const ProjectShot& shot : project.shots) {
    const std::string value =
        index < shot.effect.parameters.size() && !shot.effect.parameters[index].keys.empty()
            ? valueText(shot.effect.parameters[index])
            : "-";
    if (text.empty()) text = value;
    same = same && value == text;
  }
  return same ? text : "differs between shots";
}

}  // namespace

std::vector<ShotFindings> findingsOf(const Project& project) {
  std::vector<ShotFindings> shots;
  for (const ProjectShot& shot : project.shots) shots.push_back(shot.found);
  return shots;
}

Levels levelsOf(const Project& project) {
  Levels all;
  for (const ProjectShot& shot : project.shots) {
    appendShot(all, readLevels(shot.effect.sequenceData), shot.found.frames);
  }
  return all;
}

// Effect versions are packed: 13 bits of major (split), 4 of minor, 4 of bug fix.
std::string versionText(std::uint32_t packed) {
  const std::uint32_t major = ((packed >> 19) & 7U) | (((packed >> 26) & 15U) << 3);
  return fmt::format("{}.{}.{}", major, (packed >> 15) & 15U, (packed >> 11) & 15U);
}

std::string projectText(const Project& project, const Levels& levels) {
  const std::vector<ShotFindings> shots = findingsOf(project);
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
  line("flicker, input", fmt::format("{:.2f} %", figuresOf(levels.input, shots).flicker));
  line("flicker, desired", fmt::format("{:.2f} %", figuresOf(levels.desired, shots).flicker));
  line("target", project.target);
  text += shotsText(shots, levels);
  const auto& parameters = project.shots.front().effect.parameters;
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    const auto& parameter = parameters[i];
    if (parameter.name.empty() || parameter.keys.empty() || parameter.name == " ") continue;
    line(parameter.name, valuesText(project, i));
  }
  text += fmt::format("\n{:>8} {:>10} {:>10} {:>10} {:>10} {:>8}\n", "frame", "input", "spread",
                      "desired", "spread", "gain");
  for (const ShotFindings& shot : shots) {
    for (std::int64_t frame = shot.frames.first(); frame <= shot.frames.last(); ++frame) {
      const auto i = static_cast<std::size_t>(frame);
      text += fmt::format("{:>8} {:>10.4f} {:>10.4f} {:>10.4f} {:>10.4f} {:>8.4f}", i,
                          levels.input[i], levels.inputSpread[i], levels.desired[i],
                          levels.desiredSpread[i], levels.gain(i));
      const std::int64_t original = shot.frames.originalOf(frame);
      if (original != frame) text += fmt::format("  repeats {}", original);
      text += '\n';
    }
  }
  return text;
}

}  // namespace cli
