// stats/status_text.h — "%d of %d frames analyzed".
#pragma once

#include <cstdint>

#include "stats/sequence_state.h"

namespace varilum {

// Writes the text with these counts into the state's status text, always ended with NUL.
void formatStatusText(SequenceState& state, std::int32_t analyzed, std::int32_t frames) noexcept;

}  // namespace varilum
