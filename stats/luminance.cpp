// stats/luminance.cpp — the weights by level.
#include "stats/luminance.h"

namespace varilum {

void fillLuminanceWeights(LuminanceWeights& weights) noexcept {
  for (int level = 0; level < 256; ++level) {
    weights.red[level] = level * kRedWeight;
    weights.green[level] = level * kGreenWeight;
    weights.blue[level] = level * kBlueWeight;
  }
}

}  // namespace varilum
