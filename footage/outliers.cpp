// footage/outliers.cpp — frames that stand out from those around them.
#include "footage/outliers.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

#include "footage/line_fit.h"

namespace footage {
namespace {

constexpr std::size_t kNeighbours = 15;  // frames to each side
// Off the line through the neighbours: so many of their usual deviations, and at least so much.
constexpr double kDeviations = 5;
const double kLeast = std::log(1.13);
constexpr double kUsualAtLeast = 0.01;
constexpr double kMadToDeviation = 1.4826;  // of a normal distribution

// A black frame: in the mean and in its brightest cell, in levels.
constexpr double kBlackMean = 8;
constexpr double kBlackCell = 24;
constexpr double kTimesBlack = 3;  // the shot is at least that much brighter

// Of the change, what an exposure may leave unexplained.
constexpr double kUnexplained = 0.25;
constexpr double kClipped = 250;

double logLevel(const FrameMeasure& frame) {
  return std::log(frame.meanLuminance + 1);
}

bool isDark(const FrameMeasure& frame) {
  return frame.meanLuminance <= kBlackMean &&
         *std::max_element(frame.thumbnail.begin(), frame.thumbnail.end()) <= 256 * kBlackCell;
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
    for (std::size_t i = 0; i < frames.size(); ++i) judge(i);
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

  void judge(std::size_t frame) {
    const std::vector<FrameLevel> points = around(frame);
    const double here = logLevel(frames_[frame]);
    if (points.size() < 4) {
      usual_.push_back(here);
      standings_.push_back(black_[frame] ? Standing::black : Standing::normal);
      return;
    }
    const FittedLine line = fitRobustLine(points);
    std::vector<double> deviations;
    for (const FrameLevel& point : points) {
      deviations.push_back(std::abs(point.level - line.at(point.frame)));
    }
    const double usual = std::max(kUsualAtLeast, kMadToDeviation * median(std::move(deviations)));
    const double off = here - line.at(static_cast<double>(frame));
    usual_.push_back(line.at(static_cast<double>(frame)));
    if (black_[frame]) {
      standings_.push_back(Standing::black);
    } else if (std::abs(off) < std::max(kLeast, kDeviations * usual)) {
      standings_.push_back(Standing::normal);
    } else {
      standings_.push_back(off > 0 ? Standing::brighter : Standing::darker);
    }
  }

  Outlier outlier(std::size_t first, std::size_t last) const {
    std::size_t farthest = first;
    const auto off = [this](std::size_t i) { return std::abs(logLevel(frames_[i]) - usual_[i]); };
    bool exposure = true;
    for (std::size_t i = first; i <= last; ++i) {
      if (off(i) > off(farthest)) farthest = i;
      exposure = exposure && isExposure(i, first, last);
    }
    const OutlierKind kind = standings_[first] == Standing::black ? OutlierKind::black
                             : exposure                           ? OutlierKind::exposureJump
                                                                  : OutlierKind::realLight;
    return {static_cast<std::int64_t>(first), static_cast<std::int64_t>(last), kind,
            frames_[farthest].meanLuminance / std::max(std::exp(usual_[farthest]) - 1, 1e-3)};
  }

  /// Whether a gain makes the frame out of the pictures before and after the outlier. What moves
  /// between those two is not held against it.
  bool isExposure(std::size_t frame, std::size_t first, std::size_t last) const {
    const FrameMeasure& before = frames_[first > 0 ? first - 1 : last + 1];
    const FrameMeasure& after = frames_[last + 1 < frames_.size() ? last + 1 : first - 1];
    std::vector<double> gains;
    const auto level = [](const FrameMeasure& from, std::size_t i) {
      return from.thumbnail[i] / 256.0 + 1;
    };
    const auto steady = [&](std::size_t i) { return 0.5 * (level(before, i) + level(after, i)); };
    const FrameMeasure& here = frames_[frame];
    for (std::size_t i = 0; i < here.thumbnail.size(); ++i) {
      if (level(here, i) < kClipped) gains.push_back(level(here, i) / steady(i));
    }
    const double gain = gains.empty() ? 255 : median(std::move(gains));
    double rest = 0;
    double change = 0;
    double movement = 0;
    for (std::size_t i = 0; i < here.thumbnail.size(); ++i) {
      const double now = std::min(level(here, i), kClipped);
      rest += std::pow(now - std::min(gain * steady(i), kClipped), 2);
      change += std::pow(now - steady(i), 2);
      movement += std::pow(gain * (level(before, i) - level(after, i)), 2);
    }
    return rest - movement < kUnexplained * kUnexplained * change;
  }

  std::span<const FrameMeasure> frames_;
  std::vector<bool> black_;
  std::vector<double> usual_;  // logarithms of the levels expected
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
