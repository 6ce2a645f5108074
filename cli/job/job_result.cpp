// cli/job/job_result.cpp — what came of deflickering a clip.
#include "cli/job/job_result.h"

#include <cmath>

#include "footage/flicker.h"

namespace cli {
namespace {

using Level = double FrameResult::*;

// Shots count by their frames; the root mean square stays one.
class Sum {
 public:
  void add(const FlickerFigures& shot, double frames) {
    flicker_ += frames * shot.flicker * shot.flicker;
    jerk_ += frames * shot.jerk;
    frames_ += frames;
  }
  FlickerFigures value() const {
    if (frames_ == 0.0) return {};
    return {std::sqrt(flicker_ / frames_), jerk_ / frames_};
  }

 private:
  double flicker_ = 0.0;
  double jerk_ = 0.0;
  double frames_ = 0.0;
};

FlickerFigures figuresOfAll(const JobResult& job, FlickerFigures ShotResult::*figures) {
  std::vector<double> frames(job.shots.size(), 0.0);
  for (const FrameResult& frame : job.frames) frames[frame.shot] += 1.0;
  Sum sum;
  for (std::size_t i = 0; i < frames.size(); ++i) sum.add(job.shots[i].*figures, frames[i]);
  return sum.value();
}

FlickerFigures figuresOfShot(const JobResult& job, std::size_t shot, Level level) {
  std::vector<double> levels;
  for (const FrameResult& frame : job.frames) {
    if (frame.shot == shot) levels.push_back(frame.*level);
  }
  return figuresOf(levels);
}

}  // namespace

FlickerFigures figuresOf(std::span<const double> levels) {
  return {footage::flickerRms(levels), footage::jerk(levels)};
}

FlickerFigures figuresOf(std::span<const double> levels, std::span<const ShotFindings> shots) {
  Sum sum;
  for (const ShotFindings& shot : shots) {
    const auto count = static_cast<std::size_t>(shot.frames.count());
    const auto first = static_cast<std::size_t>(shot.frames.first());
    sum.add(figuresOf(levels.subspan(first, count)), static_cast<double>(count));
  }
  return sum.value();
}

bool isWorse(const FlickerFigures& after, const FlickerFigures& before) {
  // Differences below this, in percent, are rounding.
  constexpr double kTolerance = 0.01;
  // A fade counts as flicker, and somewhat more so when it is smooth.
  constexpr double kMuchLess = 10.0;
  const double flicker = after.flicker - before.flicker;
  const double jerk = after.jerk - before.jerk;
  return (flicker > kTolerance && -jerk < kMuchLess * flicker) ||
         (jerk > kTolerance && jerk > -flicker);
}

void measureShots(JobResult& job) {
  for (std::size_t i = 0; i < job.shots.size(); ++i) {
    job.shots[i].before = figuresOfShot(job, i, &FrameResult::input);
    job.shots[i].after = figuresOfShot(job, i, &FrameResult::output);
  }
}

FlickerFigures figuresBefore(const JobResult& job) {
  return figuresOfAll(job, &ShotResult::before);
}

FlickerFigures figuresAfter(const JobResult& job) {
  return figuresOfAll(job, &ShotResult::after);
}

}  // namespace cli
