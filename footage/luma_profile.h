// footage/luma_profile.h — a frame's mean luma, and from how bright components it comes.
#pragma once

#include <span>

#include "footage/frame_measure.h"
#include "footage/luminance_quantiles.h"

namespace footage {

/// Shares of red, green and blue in luma; they add up to 1.
struct LumaWeights {
  double red = 0.3;
  double green = 0.59;
  double blue = 0.11;
};

/// Of all components of a frame, each weighing as much as it counts in luma. A curve that acts on
/// every component alike acts on these as it does on the picture, so that the mean luma behind it
/// follows from them, also where one component is cut off at white and others are not.
struct LumaProfile {
  double mean = 0;  ///< luma, 0..255, of all pixels
  LuminanceQuantiles components{};
};

/// The mean looks at every pixel, the components at an even sample of large frames. A frame without
/// pixels gives a fresh record. Any thread; no allocation.
LumaProfile profileLuma(const ArgbRows& pixels, const LumaWeights& weights);

/// Mean luma behind a curve. `curve`: what becomes of components 0..255, 256 of them, in levels.
double lumaBehind(const LumaProfile& profile, std::span<const double, 256> curve);

}  // namespace footage
