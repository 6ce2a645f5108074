// plugin/arbitrary_callback.h — ARBITRARY_CALLBACK: what the host cannot do with Luminance values.
#pragma once

#include <cstdint>

#include "plugin/command.h"

namespace varilum {

// Results of parsing text that the host's own numbers have no place for.
inline constexpr std::int32_t kScanNothing = 0xFEBE00;    // no text
inline constexpr std::int32_t kScanNotNumber = 0xFEBE02;  // text that is no number

// [any thread, re-entrant; effect_ref may be null]
std::int32_t arbitraryCallback(const Command& command);

}  // namespace varilum
