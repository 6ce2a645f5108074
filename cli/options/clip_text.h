// cli/options/clip_text.h — a clip described, for people and for programs.
#pragma once

#include <span>
#include <string>

#include "cli/shots/levels.h"
#include "cli/shots/shot_findings.h"
#include "media/clip_info.h"

namespace cli {

/// A line a property.
std::string clipText(const media::ClipInfo& clip);
/// One object, indented, with a final newline; `shots` is a member when they were looked for.
std::string clipJson(const media::ClipInfo& clip);
std::string clipJson(const media::ClipInfo& clip, std::span<const ShotFindings> shots,
                     const Levels& levels);

}  // namespace cli
