// footage/cuts.cpp — hard cuts between shots.
#include "footage/cuts.h"

#include <algorithm>
#include <cstddef>
#include <deque>
#include <functional>
#include <iterator>
#include <utility>

#include "footage/likeness.h"
#include "footage/line_fit.h"

namespace footage {
namespace {

// Differences of pictures: 0 the same, 1 nothing in common.
constexpr double kRepeated = 0.002;     // less is the same picture again
constexpr std::int64_t kRepeats = 2;    // left out in a row: more and it is a still picture
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

}  // namespace

/// The clip without its repeated frames, as much of it as is needed. Numbers below count these
/// pictures from the start of the clip.
class CutFinder::Window {
 public:
  void add(const FrameMeasure& frame) {
    const std::int64_t number = frames_++;
    const Picture picture(frame);
    double change = 0;
    if (!shown_.empty()) {
      change = shown_.back().picture.compare(picture).difference;
      if (change < kRepeated && number - shown_.back().frame <= kRepeats) return;
    }
    shown_.push_back({number, change, frame.meanLuminance, picture});
    bridgeUpTo(count() - 1 - kBridged);
    judgeUpTo(count() - 1 - kBridged - kNeighbours);
    while (first_ < judged_ - kNeighbours) {
      shown_.pop_front();
      ++first_;
    }
  }

  void finish() {
    bridgeUpTo(count() - 1);
    judgeUpTo(count() - 1);
  }

  const std::vector<std::int64_t>& cuts() const { return cuts_; }
  std::int64_t decided() const { return judged_ + 1 < count() ? at(judged_ + 1).frame : frames_; }

 private:
  struct Shown {
    std::int64_t frame;  // that shows it first
    double change;       // from the picture before
    double light;        // mean luminance
    Picture picture;
  };
  using Measure = double (*)(const Shown&);

  static double across(const Shown& shown) { return shown.picture.sharpnessAcross(); }
  static double down(const Shown& shown) { return shown.picture.sharpnessDown(); }
  static double light(const Shown& shown) { return shown.light; }

  std::int64_t count() const { return first_ + std::ssize(shown_); }
  const Shown& at(std::int64_t i) const { return shown_[static_cast<std::size_t>(i - first_)]; }
  Shown& at(std::int64_t i) { return shown_[static_cast<std::size_t>(i - first_)]; }
  double change(std::int64_t i) const { return at(i).change; }
  Comparison compare(std::int64_t i, std::int64_t j) const {
    return at(i).picture.compare(at(j).picture);
  }

  /// Pictures up to this one, whose changes no later one can alter any more.
  void bridgeUpTo(std::int64_t last) {
    while (bridged_ < last) bridge(++bridged_);
  }

  void judgeUpTo(std::int64_t last) {
    while (judged_ < last) {
      const std::int64_t i = ++judged_;
      if (standsOut(i) && isSharp(i) && isNoFade(i) && staysApart(i) && changesEverywhere(i)) {
        cuts_.push_back(at(i).frame);
      }
    }
  }

  /// Where a picture comes back within a few, what was between was no change.
  void bridge(std::int64_t begin) {
    if (change(begin) < kLeastChange) return;
    for (std::int64_t end = begin + 1; end <= std::min(begin + kBridged, count() - 1); ++end) {
      const double least = std::min(change(begin), change(end));
      if (least < kLeastChange / 2) continue;
      const double bridged = compare(begin - 1, end).difference;
      if (bridged > (isBrighter(begin, end) ? kKeptAcrossLight : kKeptAcross) * least) continue;
      for (std::int64_t i = begin; i <= end; ++i) at(i).change = bridged;
      return;
    }
  }

  /// Whether all pictures between are brighter than those on both sides.
  bool isBrighter(std::int64_t begin, std::int64_t end) const {
    const double around = std::max(at(begin - 1).light, at(end).light);
    for (std::int64_t i = begin; i < end; ++i) {
      if (at(i).light < kFlashLight * around) return false;
    }
    return true;
  }

  /// The changes of the pictures from `first` to `last`.
  std::vector<double> changes(std::int64_t first, std::int64_t last) const {
    std::vector<double> some;
    for (std::int64_t i = std::max<std::int64_t>(1, first); i <= std::min(last, count() - 1); ++i) {
      some.push_back(change(i));
    }
    return some;
  }

  /// More change than around it, and of a sudden.
  bool standsOut(std::int64_t i) const {
    const double here = change(i);
    if (here < kLeastChange) return false;
    std::vector<double> around = changes(i - kNeighbours, i - 1);
    const std::vector<double> later = changes(i + 1, i + kNeighbours);
    around.insert(around.end(), later.begin(), later.end());
    if (std::ssize(around) <= kPassedOver) return true;
    const double before = change(i - 1) - median(changes(i - kNeighbours, i - 2));
    const double after =
        i + 1 < count() ? change(i + 1) - median(changes(i + 2, i + kNeighbours)) : 0.0;
    const double allowed = std::max(kNextToIt * (1 - 2 * compare(i - 1, i).kept), kNextToItAtLeast);
    if (std::max(before, 0.0) + std::max(after, 0.0) > allowed * here) return false;
    const auto most = around.begin() + kPassedOver;
    std::nth_element(around.begin(), most, around.end(), std::greater<>());
    return here > kTimesTheUsual * *most;
  }

  /// The median of a measure two to four pictures further away from the cut.
  double further(Measure measure, std::int64_t near, int direction) const {
    std::vector<double> far;
    for (int i = 2; i <= 4; ++i) {
      const std::int64_t place = near + direction * i;
      if (place >= 0 && place < count()) far.push_back(measure(at(place)));
    }
    return far.empty() ? measure(at(near)) : median(std::move(far));
  }

  /// The pictures at the cut are not smeared more than those further away: else it is a whip pan.
  bool isSharp(std::int64_t i) const {
    const auto share = [this](std::int64_t near, int direction) {
      const auto kept = [&](Measure sharpness) {
        return (sharpness(at(near)) + kSharpnessFloor) /
               (further(sharpness, near, direction) + kSharpnessFloor);
      };
      const double keptAcross = kept(across);
      const double keptDown = kept(down);
      const double least = std::min(keptAcross, keptDown);
      // Another part of the place may be less rich, but then in both directions.
      return std::min(1.0, std::max(least, least / std::max(keptAcross, keptDown)));
    };
    const double before = share(i - 1, -1);
    const double after = share(i, 1);
    return std::min(before, after) > kKeptSharpness && before * after > kKeptByBoth;
  }

  /// Neither picture is on its way to or from the other's black.
  bool isNoFade(std::int64_t i) const {
    const double before = at(i - 1).light;
    const double after = at(i).light;
    return before < after ? after > kFading * further(light, i, 1)
                          : before > kFading * further(light, i - 1, -1);
  }

  /// Nothing of what was before comes back right after.
  bool staysApart(std::int64_t i) const {
    const double least = kKeptAcross * change(i);
    const std::int64_t last = std::min(i + kBridged, count() - 1);
    for (std::int64_t before = std::max<std::int64_t>(0, i - kBridged - 1); before < i; ++before) {
      for (std::int64_t after = i; after <= last; ++after) {
        if (compare(before, after).difference < least) return false;
      }
    }
    return true;
  }

  bool changesEverywhere(std::int64_t i) const { return compare(i - 1, i).kept <= kKeptParts; }

  std::deque<Shown> shown_;  // from `first_` on: what judging goes back to, and all after
  std::int64_t first_ = 0;
  std::int64_t bridged_ = 0;
  std::int64_t judged_ = 0;
  std::int64_t frames_ = 0;
  std::vector<std::int64_t> cuts_;
};

CutFinder::CutFinder() : window_(std::make_unique<Window>()) {}
CutFinder::~CutFinder() = default;

void CutFinder::add(const FrameMeasure& frame) {
  window_->add(frame);
}

void CutFinder::finish() {
  window_->finish();
}

const std::vector<std::int64_t>& CutFinder::cuts() const noexcept {
  return window_->cuts();
}

std::int64_t CutFinder::decided() const noexcept {
  return window_->decided();
}

std::vector<std::int64_t> findCuts(std::span<const FrameMeasure> frames) {
  CutFinder finder;
  for (const FrameMeasure& frame : frames) finder.add(frame);
  finder.finish();
  return finder.cuts();
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
