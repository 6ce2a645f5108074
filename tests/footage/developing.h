// tests/footage/developing.h — what happens to a scene's light between lens and file.
#pragma once

#include <array>

#include "footage/frame_measure.h"
#include "tests/footage/random_numbers.h"
#include "tests/footage/scene.h"

namespace footage::test {

struct Treatment {
  std::array<double, 3> gain{1, 1, 1};
  double gamma = 1;
  double white = 0;     ///< share of white mixed in
  double sideGain = 1;  ///< of light that falls from one side ...
  double sideX = 0;     ///< ... which is here, in frame widths
  double shiftY = 0;    ///< frame widths
  double fade = 1;      ///< 0: black
};

/// Applies the treatment, grain and rounding, and measures.
FrameMeasure develop(const Frame& frame, const Treatment& treatment, bool blackWhite, double grain,
                     RandomNumbers& random);

}  // namespace footage::test
