// stats/moving_window.h — means over a window that moves along an array of levels.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace varilum {

// The plain rule: the levels greater than 0 added up in order, divided by their number; fallback
// when there is none.
double meanOfPositive(std::span<const double> levels, double fallback) noexcept;

// Keeps the sum of the levels greater than 0 as a whole number of units of 2^-kFraction: what comes
// in and goes out as the window moves is added and taken away without loss, so a step costs the
// same whatever the window's length.
template <int kFraction>
class MovingWindow {
 public:
  explicit MovingWindow(std::span<const double> levels) noexcept : levels_(levels) {}

  // Takes in the levels from first to before end, both within the array.
  void moveTo(std::size_t first, std::size_t end) noexcept {
    const bool overlaps = first < end_ && first_ < end;
    // Cheaper from scratch when little is shared.
    const std::size_t steps = distance(first, first_) + distance(end, end_);
    if (!overlaps || steps > end - first) {
      sum_ = 0;
      count_ = unfit_ = rounded_ = 0;
      first_ = end_ = first;
    }
    while (end_ < end) add(levels_[end_++], 1);
    while (first_ > first) add(levels_[--first_], 1);
    while (end_ > end) add(levels_[--end_], -1);
    while (first_ < first) add(levels_[first_++], -1);
  }

  // All of them whole numbers of units, and few enough for a double to add them up without
  // rounding: in whatever order, the sum is this one.
  bool isExact() const noexcept { return isKnown() && rounded_ == 0 && sum_ < kLeastUncertain; }
  // The sum is right to a unit a level, downwards.
  bool isKnown() const noexcept { return unfit_ == 0 && levelsInside() < kMostLevels; }

  std::int64_t count() const noexcept { return count_; }
  double sum() const noexcept { return static_cast<double>(sum_) * kUnit; }
  double uncertainty() const noexcept { return static_cast<double>(rounded_) * kUnit; }
  std::span<const double> levels() const noexcept { return levels_.subspan(first_, end_ - first_); }

 private:
  static constexpr double kUnit = 1.0 / static_cast<double>(std::int64_t{1} << kFraction);
  static constexpr std::int64_t kLeastUncertain = std::int64_t{1} << 53;
  static constexpr int kLevelBits = 9;
  static constexpr double kUnfitLevel = 1 << kLevelBits;  // such levels are not counted in units
  static constexpr std::size_t kMostLevels = std::size_t{1} << (62 - kLevelBits - kFraction);

  static std::size_t distance(std::size_t a, std::size_t b) noexcept {
    return a < b ? b - a : a - b;
  }
  std::size_t levelsInside() const noexcept { return end_ - first_; }

  void add(double level, int sign) noexcept {
    if (!(level > 0.0)) return;
    count_ += sign;
    if (level >= kUnfitLevel) {
      unfit_ += sign;
      return;
    }
    const double units = level / kUnit;
    const auto whole = static_cast<std::int64_t>(units);
    sum_ += sign * whole;
    rounded_ += static_cast<double>(whole) == units ? 0 : sign;
  }

  std::span<const double> levels_;
  std::size_t first_ = 0;
  std::size_t end_ = 0;
  std::int64_t sum_ = 0;
  std::int64_t count_ = 0;    // levels greater than 0
  std::int64_t unfit_ = 0;    // of them, those that sum_ lacks
  std::int64_t rounded_ = 0;  // of them, those that lost less than a unit in sum_
};

// Means of levels, which single precision holds when they are plain means of a frame. Bit for bit
// as the plain rule gives them; levels of finer steps cost the length of the window.
class LevelMeans {
 public:
  explicit LevelMeans(std::span<const double> levels) noexcept : window_(levels) {}
  double over(std::size_t first, std::size_t end, double fallback) noexcept;

 private:
  MovingWindow<30> window_;
};

// Means rounded to single precision, bit for bit as the plain rule's mean rounds. The window's
// length is only paid for when the mean lies so close to a rounding boundary that the order of
// adding may decide.
class RoundedMeans {
 public:
  explicit RoundedMeans(std::span<const double> levels) noexcept : window_(levels) {}
  float over(std::size_t first, std::size_t end, double fallback) noexcept;

 private:
  MovingWindow<36> window_;
};

}  // namespace varilum
