// stats/correction_table.h — the output level for each input level of the frame in hand.
//
// The builders read the frame's levels, spreads, method and clipping settings from the state, and
// write its correctionTable. Without a positive input level (black or not analysed) they return
// false and leave the table as it was.
#pragma once

#include "stats/sequence_state.h"

namespace varilum {

// entry = level.
void buildIdentityTable(SequenceState& state) noexcept;

// out = level x desired / input; keeps the current, smallest and largest gain.
bool buildLinearTable(SequenceState& state) noexcept;

// out = (level - input) x (desired spread / input spread) + desired.
bool buildShiftTable(SequenceState& state) noexcept;

// out = 255 x (level / 255)^(1 / g), g = log(input / 255) / log(desired / 255), stored as
// gammaValue; keeps the gains too. log: natural logarithm, the host's.
bool buildGammaTable(SequenceState& state, double (*log)(double)) noexcept;

// The table of state.correctionMethod (Linear for unknown values), or the identity for a frame
// that must not be deflickered.
void buildCorrectionTable(SequenceState& state, bool dontDeflicker, double (*log)(double)) noexcept;

}  // namespace varilum
