// plugin/parameter_setup.h — PARAMS_SETUP: declaring the parameters and the panel.
#pragma once

#include <cstdint>

#include "plugin/command.h"

namespace varilum {

// Returns the first add_param error, after which nothing more is declared, or else the result of
// registering the panel.
std::int32_t parameterSetup(const Command& command);

}  // namespace varilum
