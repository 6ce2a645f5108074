// footage/exposure.cpp — whether pictures differ in nothing but how they were exposed.
#include "footage/exposure.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "footage/line_fit.h"

namespace footage {
namespace {

// Of the change, what an exposure may leave unexplained.
constexpr double kUnexplained = 0.35;
constexpr double kClipped = 250;
constexpr double kNearWhite = 200;  // some of a cell's pixels may be clipped
// Parts of the picture, in cells, and how far apart an exposure's gains in them may be: logarithms,
// and of the whole picture's gain.
constexpr int kPartWidth = 8;
constexpr int kPartHeight = 9;
constexpr double kGainsApart = 0.12;
constexpr double kGainsApartOfGain = 0.25;

using Picture = std::array<double, kThumbnailCells>;

/// Levels, 1 more than they are so that ratios have a meaning in black.
Picture pictureOf(const Thumbnail& thumbnail) {
  Picture picture;
  for (std::size_t i = 0; i < picture.size(); ++i) picture[i] = thumbnail[i] / 256.0 + 1;
  return picture;
}

/// How far apart the gains from one picture to another are between the parts of the frame, as
/// logarithms; the farthest part on either side aside, where something may have moved. Cells that
/// `gain` ought to bring near white, and that are, take no part.
double gainsApart(const Picture& from, const Picture& to, double gain) {
  std::vector<double> gains;
  for (int top = 0; top < kThumbnailHeight; top += kPartHeight) {
    for (int left = 0; left < kThumbnailWidth; left += kPartWidth) {
      std::vector<double> inside;
      for (int y = top; y < top + kPartHeight; ++y) {
        for (int x = left; x < left + kPartWidth; ++x) {
          const auto i = static_cast<std::size_t>(y * kThumbnailWidth + x);
          if (std::max(gain * from[i], to[i]) < kNearWhite)
            inside.push_back(std::log(to[i] / from[i]));
        }
      }
      if (!inside.empty()) gains.push_back(median(std::move(inside)));
    }
  }
  if (gains.size() < 4) return 0;
  std::sort(gains.begin(), gains.end());
  return gains[gains.size() - 2] - gains[1];
}

}  // namespace

bool isExposure(const Thumbnail& picture, const Thumbnail& before, const Thumbnail& after) {
  const Picture earlier = pictureOf(before);
  const Picture later = pictureOf(after);
  const Picture here = pictureOf(picture);
  Picture steady;
  std::vector<double> gains;
  for (std::size_t i = 0; i < steady.size(); ++i) {
    steady[i] = 0.5 * (earlier[i] + later[i]);
    if (here[i] < kClipped) gains.push_back(here[i] / steady[i]);
  }
  if (gains.empty()) return false;  // white all over: nothing that a gain could bring back
  const double gain = median(std::move(gains));
  double rest = 0;
  double change = 0;
  double movement = 0;
  for (std::size_t i = 0; i < steady.size(); ++i) {
    const double now = std::min(here[i], kClipped);
    rest += std::pow(now - std::min(gain * steady[i], kClipped), 2);
    change += std::pow(now - steady[i], 2);
    movement += std::pow(gain * (earlier[i] - later[i]), 2);
  }
  return rest - movement < kUnexplained * kUnexplained * change &&
         gainsApart(steady, here, gain) - gainsApart(earlier, later, 1) <
             std::max(kGainsApart, kGainsApartOfGain * std::abs(std::log(gain)));
}

}  // namespace footage
