// footage/outliers.cpp — frames that stand out from those around them.
#include "footage/outliers.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "footage/exposure.h"
#include "footage/line_fit.h"

namespace footage {
namespace {

constexpr std::size_t kNeighbours = 15;  // frames to each side
// Off the line through the neighbours: so many of their usual deviations, and at least so much.
constexpr double kDeviations = 5;
const double kLeast = std::log(1.13);
constexpr double kShareOfShot = 0.8;  // of the whole shot's usual deviation: a few neighbours may
                                      // agree by chance
constexpr std::size_t kFewest = 4;
constexpr double kMadToDeviation = 1.4826;  // of a normal distribution

// A black frame: in the mean and in its brightest cell, in levels.
constexpr double kBlackMean = 8;
constexpr double kBlackCell = 24;
constexpr double kTimesBlack = 3;  // the shot is at least that much brighter

/// What the frames around one lead to expect of it: logarithms of levels.
struct Expectation {
  double level = 0;
  double deviation = 0;  // the neighbours' usual one
};

double logLevel(double level) {
  return std::log(level + 1);
}

/// The level that a shot has to exceed for a dark frame of it to be a black one.
double brightEnough(double level) {
  return kTimesBlack * (level + 1);
}

bool isDark(const FrameMeasure& frame) {
  return frame.meanLuminance <= kBlackMean &&
         *std::max_element(frame.thumbnail.begin(), frame.thumbnail.end()) <= 256 * kBlackCell;
}

/// By frames `around`, its own aside. `isBlack` takes a frame.
Expectation expectationOf(std::size_t frame, std::span<const double> levels, const auto& isBlack) {
  std::vector<FrameLevel> points;
  const std::size_t last = std::min(frame + kNeighbours, levels.size() - 1);
  for (std::size_t i = frame - std::min(frame, kNeighbours); i <= last; ++i) {
    if (i != frame && !isBlack(i)) points.push_back({static_cast<double>(i), logLevel(levels[i])});
  }
  if (points.size() < kFewest) return {logLevel(levels[frame]), 0};
  const FittedLine line = fitRobustLine(points);
  std::vector<double> deviations;
  for (const FrameLevel& point : points) {
    deviations.push_back(std::abs(point.level - line.at(point.frame)));
  }
  return {line.at(static_cast<double>(frame)), kMadToDeviation * median(std::move(deviations))};
}

enum class Standing : std::uint8_t { normal, darker, brighter, black };

Standing standingOf(double off, double deviation) {
  if (std::abs(off) < std::max(kLeast, kDeviations * deviation)) return Standing::normal;
  return off > 0 ? Standing::brighter : Standing::darker;
}

}  // namespace

/// Everything about the shot's levels once all of them are known.
class OutlierFinder::Shot {
 public:
  explicit Shot(const OutlierFinder& found) : found_(found) {
    std::vector<double> lit;
    for (std::size_t i = 0; i < count(); ++i) {
      if (!found.isDark(i)) lit.push_back(level(i));
    }
    const double usual = median(std::move(lit));
    for (std::size_t i = 0; i < count(); ++i) {
      black_.push_back(found.isDark(i) && usual > brightEnough(level(i)));
    }
    std::vector<double> deviations;
    for (std::size_t i = 0; i < count(); ++i) {
      expected_.push_back(expectationOf(i, found.levels_, [this](auto j) { return black_[j]; }));
      if (!black_[i]) deviations.push_back(std::abs(off(i)));
    }
    everywhere_ = kMadToDeviation * median(std::move(deviations));
  }

  std::vector<Outlier> outliers() const {
    std::vector<Outlier> found;
    for (std::size_t first = 0; first < count();) {
      const Standing here = standing(first);
      std::size_t end = first + 1;
      while (end < count() && standing(end) == here) ++end;
      if (here == Standing::black || (here != Standing::normal && end - first <= kLongestOutlier)) {
        found.push_back(outlier(first, end, here));
      }
      first = end;
    }
    return found;
  }

 private:
  std::size_t count() const { return found_.levels_.size(); }
  double level(std::size_t frame) const { return found_.levels_[frame]; }
  double off(std::size_t frame) const { return logLevel(level(frame)) - expected_[frame].level; }

  Standing standing(std::size_t frame) const {
    if (black_[frame]) return Standing::black;
    return standingOf(off(frame), std::max(expected_[frame].deviation, kShareOfShot * everywhere_));
  }

  Outlier outlier(std::size_t first, std::size_t end, Standing standing) const {
    std::size_t farthest = first;
    for (std::size_t i = first; i < end; ++i) {
      if (std::abs(off(i)) > std::abs(off(farthest))) farthest = i;
    }
    const OutlierKind kind = standing == Standing::black            ? OutlierKind::black
                             : found_.isExposed(first, end - first) ? OutlierKind::exposureJump
                                                                    : OutlierKind::realLight;
    return {static_cast<std::int64_t>(first), static_cast<std::int64_t>(end) - 1, kind,
            level(farthest) / std::max(std::exp(expected_[farthest].level) - 1, 1e-3)};
  }

  const OutlierFinder& found_;
  std::vector<bool> black_;
  std::vector<Expectation> expected_;
  double everywhere_ = 0;  // the usual deviation in the whole shot
};

void OutlierFinder::add(const FrameMeasure& frame) {
  levels_.push_back(frame.meanLuminance);
  notes_.push_back(footage::isDark(frame) ? kDark : 0);
  recent_.push_back(frame.thumbnail);
  if (levels_.size() > looked_ + kNeighbours) look();
}

std::vector<Outlier> OutlierFinder::finish() {
  while (looked_ < levels_.size()) look();
  return Shot(*this).outliers();
}

/// Looks at the next frame and the runs of frames that it ends, as long as the pictures are there.
void OutlierFinder::look() {
  const std::size_t end = looked_ + 1;
  const std::uint8_t same = mayStandOut(looked_);
  notes_[looked_] = static_cast<std::uint8_t>(notes_[looked_] | same);
  std::uint8_t all = same;
  for (std::size_t length = 1; length <= std::min<std::size_t>(kLongestOutlier, end); ++length) {
    const std::size_t first = end - length;
    all &= notes_[first];
    if (all == 0) break;
    if (areExposures(first, end)) {
      notes_[first] = static_cast<std::uint8_t>(notes_[first] | 1U << (length - 1));
    }
  }
  looked_ = end;
  if (looked_ > firstRecent_ + kLongestOutlier) {
    recent_.pop_front();
    ++firstRecent_;
  }
}

/// Whether a frame may turn out brighter or darker than the others, whatever the rest of the shot
/// is like. That decides which dark frames are black ones: those up to some level.
std::uint8_t OutlierFinder::mayStandOut(std::size_t frame) const {
  std::vector<double> limits{-1.0};
  const std::size_t last = std::min(frame + kNeighbours, levels_.size() - 1);
  for (std::size_t i = frame - std::min(frame, kNeighbours); i <= last; ++i) {
    if (isDark(i)) limits.push_back(levels_[i]);
  }
  std::sort(limits.begin(), limits.end());
  limits.erase(std::unique(limits.begin(), limits.end()), limits.end());
  std::uint8_t may = 0;
  for (const double limit : limits) {
    const auto isBlack = [&](std::size_t i) { return isDark(i) && levels_[i] <= limit; };
    if (isBlack(frame)) break;
    const Expectation expected = expectationOf(frame, levels_, isBlack);
    const Standing standing =
        standingOf(logLevel(levels_[frame]) - expected.level, expected.deviation);
    if (standing == Standing::brighter) may |= kBrighter;
    if (standing == Standing::darker) may |= kDarker;
  }
  return may;
}

/// Whether frames first..end - 1 are what is before and after them, exposed otherwise.
bool OutlierFinder::areExposures(std::size_t first, std::size_t end) const {
  const auto picture = [this](std::size_t i) -> const Thumbnail& {
    return recent_[i - firstRecent_];
  };
  const Thumbnail& before = picture(first > 0 ? first - 1 : end);
  const Thumbnail& after = picture(end < levels_.size() ? end : first - 1);
  for (std::size_t i = first; i < end; ++i) {
    if (!isExposure(picture(i), before, after)) return false;
  }
  return true;
}

std::vector<Outlier> findOutliers(std::span<const FrameMeasure> shot) {
  OutlierFinder finder;
  for (const FrameMeasure& frame : shot) finder.add(frame);
  return finder.finish();
}

std::string_view name(OutlierKind kind) noexcept {
  switch (kind) {
    case OutlierKind::black:
      return "black";
    case OutlierKind::exposureJump:
      return "exposure jump";
    case OutlierKind::realLight:
      return "real light";
  }
  return {};
}

std::string_view reason(OutlierKind kind) noexcept {
  switch (kind) {
    case OutlierKind::black:
      return "there is no picture to correct";
    case OutlierKind::exposureJump:
      return "one gain makes it the picture before and after";
    case OutlierKind::realLight:
      return "the light changed in parts of the picture, as lightning does";
  }
  return {};
}

}  // namespace footage
