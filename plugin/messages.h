// plugin/messages.h — message boxes of the effect.
#pragma once

#include <cstdint>

#include "hostapi/command_data.h"
#include "plugin/global_state.h"

namespace varilum {

// Shows the text with this number under the effect's name; not when nobody is at the screen.
void showMessage(const PF_InData& in, const GlobalState* global, std::uint32_t textId) noexcept;

// Tells that the layer is too long, when error is PF_Err_OUT_OF_MEMORY. Returns error.
std::int32_t reportOutOfMemory(const PF_InData& in, const GlobalState* global,
                               std::int32_t error) noexcept;

}  // namespace varilum
