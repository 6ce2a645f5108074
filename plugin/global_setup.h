// plugin/global_setup.h — the effect's load and unload, and which host it runs in.
#pragma once

#include <cstdint>

#include "plugin/command.h"

namespace varilum {

// Makes GlobalState, reports version and capabilities, and looks at the host. -1 and a message in
// an After Effects that is not of version 13.9 or a later 13.
std::int32_t globalSetup(const Command& command);

std::int32_t globalSetdown(const Command& command);

// While versionTextPending is set: asks After Effects for its version text, once. [UI thread]
void fetchVersionText(const PF_InData& in, GlobalState& global);

}  // namespace varilum
