// footage/cuts.cpp — hard cuts between shots.
#include "footage/cuts.h"

#include <algorithm>
#include <cstddef>
#include <functional>

#include "footage/likeness.h"
#include "footage/line_fit.h"

namespace footage {
namespace {

// Differences of pictures: 0 the same, 1 nothing in common.
constexpr double kRepeated = 0.002;     // less is the same picture again
constexpr std::size_t kRepeats = 2;     // left out in a row: more and it is a still picture
constexpr double kLeastChange = 0.25;   // of a cut
constexpr double kTimesTheUsual = 1.8;  // more than pictures change here anyway
// Of it, the most above the usual just before and after: else it is gradual. Less where a part of
// the picture is kept, because something large moves into it.
constexpr double kNextToIt = 0.45;
constexpr double kNextToItAtLeast = 0.08;
// Any two pictures from before and after differ by this much of what the two at the cut do.
constexpr double kKeptAcross = 0.6;
constexpr double kKeptAcrossLight = 0.9;  // when what was between is a flash
constexpr double kFlashLight = 1.15;      // of the light around it
// Parts of the picture that stay, when something large moves into it.
constexpr double kKeptParts = 0.75;
// Of the sharpness further away: less beside a cut is a whip pan's or a fade's.
constexpr double kKeptSharpness = 0.42;
constexpr double kFading = 0.42;         // of the light further away: a fade's next to black
constexpr double kKeptByBoth = 0.33;     // the product of both sides'
constexpr double kSharpnessFloor = 0.5;  // levels
// Pictures that a flash or a gap lasts.
constexpr int kBridged = 4;
// Pictures to each side that tell what is usual, and of their changes the one that does: larger
// ones may be another cut's.
constexpr int kNeighbours = 6;
constexpr std::ptrdiff_t kPassedOver = 2;

/// The clip without its repeated frames. Indices below count these pictures.
class CutFinder {
 public:
  explicit CutFinder(std::span<const FrameMeasure> frames) : frames_(frames) {
    for (std::size_t i = 0; i < frames.size(); ++i) add(i);
    for (int i = 1; i < count(); ++i) bridge(i);
  }

  std::vector<std::int64_t> cuts() const {
    std::vector<std::int64_t> found;
    for (int i = 1; i < count(); ++i) {
      if (standsOut(i) && isSharp(i) && isNoFade(i) && staysApart(i) && changesEverywhere(i)) {
        found.push_back(static_cast<std::int64_t>(shown_[static_cast<std::size_t>(i)]));
      }
    }
    return found;
  }

 private:
  int count() const { return static_cast<int>(shown_.size()); }
  double change(int i) const { return changes_[static_cast<std::size_t>(i)]; }
  Picture picture(int i) const { return Picture(frames_[shown_[static_cast<std::size_t>(i)]]); }

  void add(std::size_t frame) {
    const Picture picture(frames_[frame]);
    double change = 0;
    if (!latest_.empty()) {
      change = latest_.front().compare(picture).difference;
      if (change < kRepeated && frame - shown_.back() <= kRepeats) return;
    }
    latest_.assign(1, picture);
    shown_.push_back(frame);
    changes_.push_back(change);
    across_.push_back(picture.sharpnessAcross());
    down_.push_back(picture.sharpnessDown());
    lights_.push_back(frames_[frame].meanLuminance);
  }

  /// Where a picture comes back within a few, what was between was no change.
  void bridge(int begin) {
    if (change(begin) < kLeastChange) return;
    for (int end = begin + 1; end <= std::min(begin + kBridged, count() - 1); ++end) {
      const double least = std::min(change(begin), change(end));
      if (least < kLeastChange / 2) continue;
      const double across = picture(begin - 1).compare(picture(end)).difference;
      if (across > (isBrighter(begin, end) ? kKeptAcrossLight : kKeptAcross) * least) continue;
      for (int i = begin; i <= end; ++i) changes_[static_cast<std::size_t>(i)] = across;
      return;
    }
  }

  /// Whether all pictures between are brighter than those on both sides.
  bool isBrighter(int begin, int end) const {
    const auto light = [this](int i) { return lights_[static_cast<std::size_t>(i)]; };
    const double around = std::max(light(begin - 1), light(end));
    for (int i = begin; i < end; ++i) {
      if (light(i) < kFlashLight * around) return false;
    }
    return true;
  }

  /// The median change of the pictures from `first` to `last`.
  double usual(int first, int last) const {
    std::vector<double> some;
    for (int i = std::max(1, first); i <= std::min(last, count() - 1); ++i) {
      some.push_back(change(i));
    }
    return median(std::move(some));
  }

  /// More change than around it, and of a sudden.
  bool standsOut(int at) const {
    const double here = change(at);
    if (here < kLeastChange) return false;
    std::vector<double> around;
    for (int i = std::max(1, at - kNeighbours); i <= std::min(at + kNeighbours, count() - 1); ++i) {
      if (i != at) around.push_back(change(i));
    }
    if (static_cast<std::ptrdiff_t>(around.size()) <= kPassedOver) return true;
    const double before = change(at - 1) - usual(at - kNeighbours, at - 2);
    const double after = at + 1 < count() ? change(at + 1) - usual(at + 2, at + kNeighbours) : 0.0;
    const double kept = picture(at - 1).compare(picture(at)).kept;
    const double allowed = std::max(kNextToIt * (1 - 2 * kept), kNextToItAtLeast);
    if (std::max(before, 0.0) + std::max(after, 0.0) > allowed * here) return false;
    const auto most = around.begin() + kPassedOver;
    std::nth_element(around.begin(), most, around.end(), std::greater<>());
    return here > kTimesTheUsual * *most;
  }

  /// The median of what `values` hold two to four pictures further away from the cut.
  double further(const std::vector<double>& values, int near, int direction) const {
    std::vector<double> far;
    for (int i = 2; i <= 4; ++i) {
      const int place = near + direction * i;
      if (place >= 0 && place < count()) far.push_back(values[static_cast<std::size_t>(place)]);
    }
    return far.empty() ? values[static_cast<std::size_t>(near)] : median(far);
  }

  /// The pictures at the cut are not smeared more than those further away: else it is a whip pan.
  bool isSharp(int at) const {
    const auto share = [this](int near, int direction) {
      const auto kept = [&](const std::vector<double>& sharpness) {
        return (sharpness[static_cast<std::size_t>(near)] + kSharpnessFloor) /
               (further(sharpness, near, direction) + kSharpnessFloor);
      };
      const double across = kept(across_);
      const double down = kept(down_);
      // Another part of the place may be less rich, but then in both directions.
      return std::min(
          1.0, std::max(std::min(across, down), std::min(across, down) / std::max(across, down)));
    };
    const double before = share(at - 1, -1);
    const double after = share(at, 1);
    return std::min(before, after) > kKeptSharpness && before * after > kKeptByBoth;
  }

  /// Neither picture is on its way to or from the other's black.
  bool isNoFade(int at) const {
    const double before = lights_[static_cast<std::size_t>(at - 1)];
    const double after = lights_[static_cast<std::size_t>(at)];
    return before < after ? after > kFading * further(lights_, at, 1)
                          : before > kFading * further(lights_, at - 1, -1);
  }

  /// Nothing of what was before comes back right after.
  bool staysApart(int at) const {
    std::vector<Picture> pictures;
    const int first = std::max(0, at - kBridged - 1);
    for (int i = first; i <= std::min(at + kBridged, count() - 1); ++i) {
      pictures.push_back(picture(i));
    }
    const double least = kKeptAcross * change(at);
    const auto middle = pictures.begin() + (at - first);
    for (auto before = pictures.begin(); before != middle; ++before) {
      for (auto after = middle; after != pictures.end(); ++after) {
        if (before->compare(*after).difference < least) return false;
      }
    }
    return true;
  }

  bool changesEverywhere(int at) const {
    return picture(at - 1).compare(picture(at)).kept <= kKeptParts;
  }

  std::span<const FrameMeasure> frames_;
  std::vector<Picture> latest_;     // the one added last
  std::vector<std::size_t> shown_;  // the frame that first shows each picture
  std::vector<double> changes_;     // of each from the one before
  std::vector<double> across_;      // sharpness
  std::vector<double> down_;
  std::vector<double> lights_;  // mean luminance
};

}  // namespace

std::vector<std::int64_t> findCuts(std::span<const FrameMeasure> frames) {
  return CutFinder(frames).cuts();
}

std::vector<Shot> shotsBetween(std::span<const std::int64_t> cuts, std::int64_t frameCount) {
  std::vector<Shot> shots;
  std::int64_t first = 0;
  const auto endAt = [&](std::int64_t frame) {
    if (frame > first) shots.push_back({first, frame - first});
    first = std::max(first, frame);
  };
  for (std::int64_t cut : cuts) {
    if (cut < frameCount) endAt(cut);
  }
  endAt(frameCount);
  return shots;
}

}  // namespace footage
