// footage/outliers.h — frames that stand out from those around them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
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

/// Finds the outliers of a shot while its frames come in, in order. It keeps nine bytes of each
/// frame and the thumbnails of some twenty.
///
/// A frame is one when the logarithm of its mean luminance is far off the line through those around
/// it, by the measure of how far frames usually are, around it and in the whole shot: in a clip
/// that flickers everywhere few frames are.
class OutlierFinder {
 public:
  void add(const FrameMeasure& frame);

  /// After the last frame: in order, at most kLongestOutlier frames each; gaps may last longer.
  std::vector<Outlier> finish();

 private:
  class Shot;
  // Bits of `notes_`. The lowest four: whether the run of one to four frames that begins here is
  // what is before and after it, exposed otherwise. Looked at only where the run may be an outlier.
  static constexpr std::uint8_t kBrighter = 0x10;
  static constexpr std::uint8_t kDarker = 0x20;
  static constexpr std::uint8_t kDark = 0x40;

  void look();
  std::uint8_t mayStandOut(std::size_t frame) const;
  bool areExposures(std::size_t first, std::size_t end) const;
  bool isDark(std::size_t frame) const { return (notes_[frame] & kDark) != 0; }
  bool isExposed(std::size_t first, std::size_t length) const {
    return (notes_[first] >> (length - 1) & 1) != 0;
  }

  std::vector<double> levels_;
  std::vector<std::uint8_t> notes_;
  std::deque<Thumbnail> recent_;  // from `firstRecent_` on
  std::size_t firstRecent_ = 0;
  std::size_t looked_ = 0;
};

/// The outliers of a whole shot.
std::vector<Outlier> findOutliers(std::span<const FrameMeasure> shot);

/// One word or two, and why it was judged so: half a sentence for a list.
std::string_view name(OutlierKind kind) noexcept;
std::string_view reason(OutlierKind kind) noexcept;

}  // namespace footage
