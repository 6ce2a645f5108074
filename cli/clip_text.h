// cli/clip_text.h — a clip described, for people and for programs.
#pragma once

#include <string>

#include "media/clip_info.h"

namespace cli {

/// A line a property.
std::string clipText(const media::ClipInfo& clip);
/// One object, indented, with a final newline.
std::string clipJson(const media::ClipInfo& clip);

}  // namespace cli
