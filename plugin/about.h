// plugin/about.h — the text of the About box.
#pragma once

#include <cstdint>

#include "plugin/command.h"

namespace varilum {

// Leaves the text in return_msg, where the host shows it from. Needs no global data.
std::int32_t about(const Command& command);

}  // namespace varilum
