// stats/correction_table.cpp — the three correction methods as tables of output levels.
#include "stats/correction_table.h"

#include <cmath>

#include "stats/number_conversion.h"

namespace varilum {
namespace {

std::uint8_t roundToLevel(double value) noexcept {
  const std::int32_t whole = truncateToInt(value + 0.5);
  return static_cast<std::uint8_t>(whole < 0 ? 0 : whole > 255 ? 255 : whole);
}

void keepGains(SequenceState& state) noexcept {
  const double gain = state.frameDesiredLuminance / state.frameInputLuminance;
  state.currentGain = gain;
  if (gain > state.largestGain) state.largestGain = gain;
  if (gain < state.smallestGain) state.smallestGain = gain;
}

// Fills the table with a straight line. With clipping adjusted, the levels above the knee run from
// the line's value there up to white instead, so that highlights keep their differences.
template <class Line>
void fillWithKnee(SequenceState& state, Line line) noexcept {
  double knee = 255.0;
  if (state.adjustClipping != 0) knee = truncateToInt(state.clippingPercent * 255.0 / 100.0);
  const double atKnee = line(knee);
  for (int i = 0; i < kLevels; ++i) {
    const double level = i;
    const double out =
        level <= knee ? line(level) : (level - knee) * (255.5 - atKnee) / (255.0 - knee) + atKnee;
    state.correctionTable[i] = roundToLevel(out);
  }
}

}  // namespace

void buildIdentityTable(SequenceState& state) noexcept {
  for (int i = 0; i < kLevels; ++i) state.correctionTable[i] = static_cast<std::uint8_t>(i);
}

bool buildLinearTable(SequenceState& state) noexcept {
  if (!(state.frameInputLuminance > 0.0)) return false;
  keepGains(state);
  const double gain = state.currentGain;
  fillWithKnee(state, [gain](double level) { return level * gain; });
  return true;
}

bool buildShiftTable(SequenceState& state) noexcept {
  const double input = state.frameInputLuminance;
  if (!(input > 0.0)) return false;
  const double desired = state.frameDesiredLuminance;
  const double inputSpread = state.frameInputSpread;
  const double ratio = inputSpread > 0.0 ? double{state.frameDesiredSpread} / inputSpread : 1.0;
  fillWithKnee(state, [=](double level) { return (level - input) * ratio + desired; });
  return true;
}

bool buildGammaTable(SequenceState& state, double (*log)(double)) noexcept {
  state.gammaValue = 1.0f;
  const double input = state.frameInputLuminance;
  if (!(input > 0.0)) return false;
  keepGains(state);
  const double desired = state.frameDesiredLuminance;
  if (!(desired > 0.0)) {  // no power reaches black: every level goes there
    state.gammaValue = 0.0f;
    for (std::uint8_t& entry : state.correctionTable) entry = 0;
    return true;
  }
  const float inputShare = static_cast<float>(input) / 255.0f;
  const float desiredShare = static_cast<float>(desired) / 255.0f;
  const float gamma = static_cast<float>(log(inputShare) / log(desiredShare));
  if (gamma != gamma) {  // both at white
    buildIdentityTable(state);
    return true;
  }
  state.gammaValue = gamma;
  const double exponent = 1.0 / double{gamma};
  for (int i = 0; i < kLevels; ++i) {
    state.correctionTable[i] = roundToLevel(std::pow(i / 255.0, exponent) * 255.0);
  }
  return true;
}

void buildCorrectionTable(SequenceState& state, bool dontDeflicker,
                          double (*log)(double)) noexcept {
  if (dontDeflicker) {
    buildIdentityTable(state);
  } else if (state.correctionMethod == kCorrectionGamma) {
    buildGammaTable(state, log);
  } else if (state.correctionMethod == kCorrectionShift) {
    buildShiftTable(state);
  } else {
    buildLinearTable(state);
  }
}

}  // namespace varilum
