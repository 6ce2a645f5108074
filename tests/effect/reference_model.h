// tests/effect/reference_model.h — the effect's arithmetic in its plainest form, to compare with.
//
// Written from the definitions, pixel by pixel and frame by frame, sharing nothing with the effect.
#pragma once

#include <cstdint>
#include <vector>

#include "tests/effect/test_footage.h"

namespace effect_test {

struct Area {
  std::int32_t left, top, right, bottom;
};

struct Levels {
  double luminance = 0.0;
  double spread = 0.0;
};

// Level 0..255 of a channel as the measurement sees it.
int channelLevel(double value, host::Depth depth);

// Mean (or brightness-weighted mean) luminance and mean absolute deviation of a frame's area.
Levels measure(const host::Image& frame, Area area, std::int32_t step, bool favorBrighter);

// The step that a speed setting leads to on an area.
std::int32_t samplingStep(std::int32_t speed, Area area);

// Flat average over frame - n .. frame + n of what is above 0; spreads rounded to single precision.
std::vector<Levels> smooth(const std::vector<Levels>& input, std::int32_t n);

// How one frame is corrected.
struct Correction {
  int method = 1;  // 1 linear, 2 shift, 3 gamma
  Levels input;
  Levels desired;
  bool clipping = false;
  double clippingPercent = 99.0;
};

// The exact value, before rounding, of an 8-bit level; and the levels that rounding may give.
double idealLevel(const Correction& c, int level);
bool matchesLevel(double ideal, int actual);

// The corrected channel value at 16 bit (0..32768 in, 0..32767 out) and float.
double corrected16(const Correction& c, double value);
double correctedFloat(const Correction& c, double value);

}  // namespace effect_test
