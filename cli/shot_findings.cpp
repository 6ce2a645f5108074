// cli/shot_findings.cpp — what was found out about each shot by looking at every frame once.
#include "cli/shot_findings.h"

#include <utility>

#include "footage/cuts.h"
#include "footage/duplicates.h"

namespace cli {
namespace {

using Measures = std::span<const footage::FrameMeasure>;

std::vector<footage::Shot> shotsOf(Measures measures, const ShotOptions& options,
                                   std::span<const std::int64_t> cuts) {
  const auto count = static_cast<std::int64_t>(measures.size());
  switch (options.shots) {
    case ShotOptions::Shots::find:
      return footage::shotsBetween(footage::findCuts(measures), count);
    case ShotOptions::Shots::listed:
      return footage::shotsBetween(cuts, count);
    case ShotOptions::Shots::off:
      break;
  }
  return {{0, count}};
}

ShotFrames framesOf(const footage::Shot& shot, Measures measures, bool keepDuplicates) {
  std::vector<std::int64_t> duplicates;
  if (!keepDuplicates) {
    const auto originals = footage::findDuplicates(measures);
    for (std::size_t i = 0; i < originals.size(); ++i) {
      const auto frame = static_cast<std::int64_t>(i);
      if (originals[i] != frame) duplicates.push_back(shot.first + frame);
    }
  }
  return {shot.first, shot.count, std::move(duplicates)};
}

bool isLeft(footage::OutlierKind kind, bool leaveFlashes) {
  return kind != footage::OutlierKind::exposureJump || leaveFlashes;
}

ShotFindings findingsOf(const footage::Shot& shot, Measures measures, const ShotOptions& options) {
  ShotFindings findings;
  findings.frames = framesOf(shot, measures, options.keepDuplicates);
  findings.matte = footage::findMatte(measures);
  // Held pictures would weigh as often as they are held, and a flash held twice last twice as long.
  const ShotFrames& frames = findings.frames;
  std::vector<footage::FrameMeasure> distinct;
  if (!frames.duplicates().empty()) {
    for (std::int32_t p = 0; p < frames.pictureCount(); ++p) {
      distinct.push_back(measures[static_cast<std::size_t>(frames.frameOf(p) - shot.first)]);
    }
  }
  for (const footage::Outlier& outlier :
       footage::findOutliers(distinct.empty() ? measures : Measures(distinct))) {
    footage::Outlier inClip = outlier;
    const auto after = static_cast<std::int32_t>(outlier.last) + 1;
    inClip.first = frames.frameOf(static_cast<std::int32_t>(outlier.first));
    inClip.last = after < frames.pictureCount() ? frames.frameOf(after) - 1 : frames.last();
    findings.outliers.push_back({inClip, isLeft(outlier.kind, options.leaveFlashes)});
  }
  return findings;
}

}  // namespace

std::vector<ShotFindings> findShots(std::span<const footage::FrameMeasure> measures,
                                    const ShotOptions& options,
                                    std::span<const std::int64_t> cuts) {
  std::vector<ShotFindings> shots;
  for (const footage::Shot& shot : shotsOf(measures, options, cuts)) {
    const auto part = measures.subspan(static_cast<std::size_t>(shot.first),
                                       static_cast<std::size_t>(shot.count));
    shots.push_back(findingsOf(shot, part, options));
  }
  return shots;
}

}  // namespace cli
