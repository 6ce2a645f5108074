// plugin/dispatch.h — from the host's command to its handler, and from failures to results.
#pragma once

#include <cstdint>

#include "plugin/command.h"

namespace varilum {

// Runs the command's handler, if it has one. Nothing is thrown: error codes that were become the
// result, and want of memory PF_Err_OUT_OF_MEMORY. The out-flags begin at 0.
std::int32_t dispatch(std::int32_t selector, const Command& command) noexcept;

}  // namespace varilum
