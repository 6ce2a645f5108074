// stats/luminance.cpp — the weights by level, and the colours that fall between two levels.
#include "stats/luminance.h"

namespace varilum {
namespace {

constexpr double kRed = 0.3;
constexpr double kGreen = 0.59;
constexpr double kBlue = 0.11;

}  // namespace

void fillLuminanceWeights(LuminanceWeights& weights) noexcept {
  for (int level = 0; level < 256; ++level) {
    weights.red[level] = level * kRed;
    weights.green[level] = level * kGreen;
    weights.blue[level] = level * kBlue;
  }
}

std::uint8_t luminanceOfTie(unsigned red, unsigned green, unsigned blue) noexcept {
  return static_cast<std::uint8_t>(red * kRed + green * kGreen + blue * kBlue + 0.5);
}

}  // namespace varilum
