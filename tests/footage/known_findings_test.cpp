// tests/footage/known_findings_test.cpp — what is found in made-up clips, digit for digit as it was
// found while all frames of a clip were held at once.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "footage/cuts.h"
#include "footage/duplicates.h"
#include "footage/outliers.h"
#include "tests/footage/findings_text.h"
#include "tests/footage/random_numbers.h"
#include "tests/footage/synthetic_clip.h"

namespace footage::test {
namespace {

/// FNV-1a.
std::uint32_t digest(std::string_view text) {
  std::uint32_t value = 2166136261U;
  for (const char c : text) value = (value ^ static_cast<unsigned char>(c)) * 16777619U;
  return value;
}

const ClipRecipe& recipe(std::string_view name) {
  return *std::ranges::find(clipRecipes(), name, &ClipRecipe::name);
}

/// A clip of the recipe, some of its frames between bars.
std::vector<FrameMeasure> barredClip(std::string_view name) {
  std::vector<FrameMeasure> frames = makeClip(recipe(name), 3).frames;
  RandomNumbers random(4);
  for (FrameMeasure& frame : frames) {
    frame.top = {static_cast<std::uint16_t>(random.chance(0.2) ? random.whole(5, 12) : 6), 80};
    frame.bottom = {6, static_cast<std::uint8_t>(random.whole(20, 100))};
    if (random.chance(0.02)) frame.width /= 2;
  }
  return frames;
}

TEST(KnownFindings, OfClipsWithAllThatHappens) {
  const std::map<std::string_view, std::uint32_t> known{
      {"all together", 1660462024U},
      {"all together, strong flicker", 4096252442U},
      {"all together, black and white", 3096748442U},
      {"all together, pulled down", 1638659894U},
      {"all together, one place", 356924343U},
      {"all together, at night", 1087070865U},
      {"one long shot", 2118501931U},
      {"held frames", 2974229378U},
      {"on twos", 2783697024U},
      {"black frames", 1098148559U},
      {"lightning at night", 1374274318U},
      {"old film, pulled down", 3191398941U},
      {"short shots, flicker", 321249168U},
      {"fades, flicker", 2530366709U},
  };
  for (const auto& [name, expected] : known) {
    const std::string text = findingsText(barredClip(name));
    EXPECT_EQ(digest(text), expected) << name << '\n' << text;
  }
}

/// A picture of 48 x 27 cells in one light, stronger towards the right by `side`.
FrameMeasure litFrame(double light, double side, RandomNumbers& random) {
  FrameMeasure frame;
  frame.width = 96;
  frame.height = 54;
  for (int y = 0; y < kThumbnailHeight; ++y) {
    for (int x = 0; x < kThumbnailWidth; ++x) {
      const double scene = 0.8 + 0.4 * ((x * 7 + y * 13) % 11) / 11.0;
      const double level = light * (1 + side * (x - 24) / 24.0) * scene + random.between(0, 0.2);
      frame.thumbnail[static_cast<std::size_t>(y * kThumbnailWidth + x)] =
          static_cast<std::uint16_t>(std::lround(256 * std::min(255.0, level)));
      frame.meanLuminance += level / kThumbnailCells;
    }
  }
  return frame;
}

/// Exposures that are off, light from one side, and stretches in the dark, black or not.
std::vector<FrameMeasure> unsteadyShot(RandomNumbers& random) {
  std::vector<FrameMeasure> frames;
  const int count = random.whole(1, 140);
  const double light = random.between(3, 90);
  const double odd = random.between(0, 0.3);
  while (static_cast<int>(frames.size()) < count) {
    if (random.chance(0.06)) {
      for (int dark = random.whole(1, 30); dark > 0; --dark) {
        frames.push_back(litFrame(random.between(0, random.chance(0.5) ? 1 : 9), 0, random));
      }
    }
    double gain = random.between(0.95, 1.05);
    double side = 0;
    if (random.chance(odd)) {
      gain = random.chance(0.5) ? random.between(0.4, 0.9) : random.between(1.1, 2.2);
      if (random.chance(0.4)) side = random.between(-0.8, 0.8);
    }
    frames.push_back(litFrame(light * gain, side, random));
  }
  return frames;
}

TEST(KnownFindings, OfOutliersInTheDarkAndInTheLight) {
  RandomNumbers random(17);
  std::string text;
  std::map<OutlierKind, int> kinds;
  for (int shot = 0; shot < 80; ++shot) {
    text += std::to_string(shot) + ':';
    for (const Outlier& outlier : findOutliers(unsteadyShot(random))) {
      text += ' ' + std::to_string(outlier.first) + '+' +
              std::to_string(outlier.last - outlier.first) + std::string(name(outlier.kind));
      ++kinds[outlier.kind];
    }
    text += '\n';
  }
  EXPECT_EQ(kinds[OutlierKind::black], 430);
  EXPECT_EQ(kinds[OutlierKind::exposureJump], 351);
  EXPECT_EQ(kinds[OutlierKind::realLight], 111);
  EXPECT_EQ(digest(text), 2207482678U) << text;
}

}  // namespace
}  // namespace footage::test
