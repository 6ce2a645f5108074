// plugin/panel_commands.h — the commands about the effect controls and the panel in them.
#pragma once

#include <cstdint>

#include "plugin/command.h"

namespace varilum {

std::int32_t updateParamsUi(const Command& command);
std::int32_t event(const Command& command);

}  // namespace varilum
