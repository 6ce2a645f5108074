// tests/footage/synthetic_clip.h — clips made up after a recipe, whose cuts are known.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "footage/frame_measure.h"
#include "tests/footage/clip_recipe.h"
#include "tests/footage/scene.h"

namespace footage::test {

/// What happens to a frame between the scene and the file.
struct Treatment {
  std::array<double, 3> gain{1, 1, 1};
  double gamma = 1;
  double white = 0;     ///< share of white mixed in
  double sideGain = 1;  ///< of light that falls from one side ...
  double sideX = 0;     ///< ... which is here, in frame widths
  double shiftY = 0;    ///< frame widths
  double fade = 1;      ///< 0: black
};

struct SyntheticClip {
  std::string name;
  std::vector<FrameMeasure> frames;
  std::vector<std::int64_t> cuts;
};

/// Any thread. `width` in pixels; 16:9.
SyntheticClip makeClip(const ClipRecipe& recipe, std::uint64_t seed, int width = 96);

/// Applies the treatment, grain and rounding, and measures.
FrameMeasure develop(const Frame& frame, const Treatment& treatment, bool blackWhite, double grain,
                     RandomNumbers& random);

}  // namespace footage::test
