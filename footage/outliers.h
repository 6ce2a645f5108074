// footage/outliers.h — frames that stand out from those around them.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "footage/frame_measure.h"

namespace footage {

/// Most frames that an outlier lasts; what lasts longer is how the shot is.
inline constexpr int kLongestOutlier = 4;

enum class OutlierKind {
  black,         ///< nothing to see: a gap
  exposureJump,  ///< the same picture under another exposure: a fault, worth correcting
  realLight,     ///< light that fell into the scene: lightning, a camera's flash; worth leaving
};

/// Frames first..last of a shot.
struct Outlier {
  std::int64_t first = 0;
  std::int64_t last = 0;
  OutlierKind kind = OutlierKind::exposureJump;
  double ratio = 1.0;  ///< mean luminance (the farthest of the frames) to the neighbourhood's
};

/// Outliers of a shot in order, at most kLongestOutlier frames each; gaps may last longer. A frame
/// is one when the logarithm of its mean luminance is far off the median around it, by the measure
/// of how far frames there usually are: in a clip that flickers everywhere few frames are.
std::vector<Outlier> findOutliers(std::span<const FrameMeasure> shot);

/// One word or two, and why it was judged so: half a sentence for a list.
std::string_view name(OutlierKind kind) noexcept;
std::string_view reason(OutlierKind kind) noexcept;

}  // namespace footage
