// tests/footage/synthetic_clip.h — clips made up after a recipe, whose cuts are known.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "footage/frame_measure.h"
#include "tests/footage/clip_recipe.h"

namespace footage::test {

struct SyntheticClip {
  std::string name;
  std::vector<FrameMeasure> frames;
  std::vector<std::int64_t> cuts;
};

/// Any thread. `width` in pixels; 16:9.
SyntheticClip makeClip(const ClipRecipe& recipe, std::uint64_t seed, int width = 96);

}  // namespace footage::test
