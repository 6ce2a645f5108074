// plugin/render_commands.h — the commands that make pictures, or tell what they are like.
#pragma once

#include <cstdint>

#include "plugin/command.h"

namespace varilum {

std::int32_t renderCommand(const Command& command);
std::int32_t smartPreRenderCommand(const Command& command);
std::int32_t smartRenderCommand(const Command& command);

// The output carries the notice while the analysis is not complete.
std::int32_t queryDynamicFlags(const Command& command);

}  // namespace varilum
