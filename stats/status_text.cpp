// stats/status_text.cpp — "%d of %d frames analyzed".
#include "stats/status_text.h"

#include <cstdio>

namespace varilum {

void formatStatusText(SequenceState& state, std::int32_t analyzed, std::int32_t frames) noexcept {
  std::snprintf(state.statusText, sizeof state.statusText, "%d of %d frames analyzed", analyzed,
                frames);
}

}  // namespace varilum
