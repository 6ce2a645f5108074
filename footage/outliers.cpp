// footage/outliers.cpp — frames that stand out from those around them.
#include "footage/outliers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

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

double logLevel(const FrameMeasure& frame) {
  return std::log(frame.meanLuminance + 1);
}

bool isDark(const FrameMeasure& frame) {
  return frame.meanLuminance <= kBlackMean &&
         *std::max_element(frame.thumbnail.begin(), frame.thumbnail.end()) <= 256 * kBlackCell;
}

using Picture = std::array<double, kThumbnailCells>;

/// Levels, 1 more than they are so that ratios have a meaning in black.
Picture pictureOf(const FrameMeasure& frame) {
  Picture picture;
  for (std::size_t i = 0; i < picture.size(); ++i) picture[i] = frame.thumbnail[i] / 256.0 + 1;
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

enum class Standing { normal, darker, brighter, black };

class Shot {
 public:
  explicit Shot(std::span<const FrameMeasure> frames) : frames_(frames) {
    std::vector<double> levels;
    for (const FrameMeasure& frame : frames) {
      if (!isDark(frame)) levels.push_back(frame.meanLuminance);
    }
    const double usual = median(std::move(levels));
    for (const FrameMeasure& frame : frames) {
      black_.push_back(isDark(frame) && usual > kTimesBlack * (frame.meanLuminance + 1));
    }
    for (std::size_t i = 0; i < frames.size(); ++i) compareWithNeighbours(i);
    std::vector<double> deviations;
    for (std::size_t i = 0; i < frames.size(); ++i) {
      if (!black_[i]) deviations.push_back(std::abs(off(i)));
    }
    const double everywhere = kMadToDeviation * median(std::move(deviations));
    for (std::size_t i = 0; i < frames.size(); ++i) standings_.push_back(judge(i, everywhere));
  }

  std::vector<Outlier> outliers() const {
    std::vector<Outlier> found;
    for (std::size_t first = 0; first < frames_.size();) {
      std::size_t end = first + 1;
      while (end < frames_.size() && standings_[end] == standings_[first]) ++end;
      const Standing standing = standings_[first];
      if (standing == Standing::black ||
          (standing != Standing::normal && end - first <= kLongestOutlier)) {
        found.push_back(outlier(first, end - 1));
      }
      first = end;
    }
    return found;
  }

 private:
  /// Logarithms of the levels around a frame, its own aside.
  std::vector<FrameLevel> around(std::size_t frame) const {
    std::vector<FrameLevel> points;
    const std::size_t last = std::min(frame + kNeighbours, frames_.size() - 1);
    for (std::size_t i = frame - std::min(frame, kNeighbours); i <= last; ++i) {
      if (i != frame && !black_[i]) {
        points.push_back({static_cast<double>(i), logLevel(frames_[i])});
      }
    }
    return points;
  }

  /// Sets what a frame is expected to be, and how far off that its neighbours are.
  void compareWithNeighbours(std::size_t frame) {
    const std::vector<FrameLevel> points = around(frame);
    if (points.size() < kFewest) {
      usual_.push_back(logLevel(frames_[frame]));
      deviations_.push_back(0);
      return;
    }
    const FittedLine line = fitRobustLine(points);
    std::vector<double> deviations;
    for (const FrameLevel& point : points) {
      deviations.push_back(std::abs(point.level - line.at(point.frame)));
    }
    usual_.push_back(line.at(static_cast<double>(frame)));
    deviations_.push_back(kMadToDeviation * median(std::move(deviations)));
  }

  double off(std::size_t frame) const { return logLevel(frames_[frame]) - usual_[frame]; }

  Standing judge(std::size_t frame, double everywhere) const {
    if (black_[frame]) return Standing::black;
    const double usual = std::max(deviations_[frame], kShareOfShot * everywhere);
    if (std::abs(off(frame)) < std::max(kLeast, kDeviations * usual)) return Standing::normal;
    return off(frame) > 0 ? Standing::brighter : Standing::darker;
  }

  Outlier outlier(std::size_t first, std::size_t last) const {
    std::size_t farthest = first;
    bool exposure = true;
    for (std::size_t i = first; i <= last; ++i) {
      if (std::abs(off(i)) > std::abs(off(farthest))) farthest = i;
      exposure = exposure && isExposure(i, first, last);
    }
    const OutlierKind kind = standings_[first] == Standing::black ? OutlierKind::black
                             : exposure                           ? OutlierKind::exposureJump
                                                                  : OutlierKind::realLight;
    return {static_cast<std::int64_t>(first), static_cast<std::int64_t>(last), kind,
            frames_[farthest].meanLuminance / std::max(std::exp(usual_[farthest]) - 1, 1e-3)};
  }

  /// Whether a gain makes the frame out of the pictures before and after the outlier, the same gain
  /// everywhere. What moves between those two is not held against it.
  bool isExposure(std::size_t frame, std::size_t first, std::size_t last) const {
    const Picture before = pictureOf(frames_[first > 0 ? first - 1 : last + 1]);
    const Picture after = pictureOf(frames_[last + 1 < frames_.size() ? last + 1 : first - 1]);
    const Picture here = pictureOf(frames_[frame]);
    Picture steady;
    std::vector<double> gains;
    for (std::size_t i = 0; i < steady.size(); ++i) {
      steady[i] = 0.5 * (before[i] + after[i]);
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
      movement += std::pow(gain * (before[i] - after[i]), 2);
    }
    return rest - movement < kUnexplained * kUnexplained * change &&
           gainsApart(steady, here, gain) - gainsApart(before, after, 1) <
               std::max(kGainsApart, kGainsApartOfGain * std::abs(std::log(gain)));
  }

  std::span<const FrameMeasure> frames_;
  std::vector<bool> black_;
  std::vector<double> usual_;       // logarithms of the levels expected
  std::vector<double> deviations_;  // the neighbours'
  std::vector<Standing> standings_;
};

}  // namespace

std::vector<Outlier> findOutliers(std::span<const FrameMeasure> shot) {
  return Shot(shot).outliers();
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
