// cli/shots/shot_findings.h — what was found out about each shot by looking at every frame once.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

#include "cli/shots/shot_frames.h"
#include "cli/shots/shot_options.h"
#include "footage/cuts.h"
#include "footage/frame_measure.h"
#include "footage/luminance_quantiles.h"
#include "footage/matte.h"
#include "footage/outliers.h"

namespace cli {

/// Frames that stand out from those around them, and what becomes of them.
struct ShotOutlier {
  footage::Outlier found;  ///< its frames count in the clip
  bool left = false;       ///< not deflickered, and out of every mean
};

struct ShotFindings {
  ShotFrames frames;
  std::vector<ShotOutlier> outliers;
  std::optional<footage::Rectangle> matte;  ///< the live picture between bars, in stored pixels
};

/// What is only needed until the shot is rendered comes beside its findings.
struct FoundShot {
  ShotFindings findings;
  std::deque<footage::LuminanceQuantiles> light;  ///< of each picture
};

/// Takes a clip apart into shots while its frames are looked at, in order. Of each frame it keeps
/// some hundred bytes at most, of the latest eighty all that was measured.
class ShotFinder {
 public:
  /// `cuts`: the first frames of the shots as the user lists them, rising, looked at when the
  /// options say that they are listed. Frames that are not in the clip change nothing.
  ShotFinder(const ShotOptions& options, std::vector<std::int64_t> cuts);
  ~ShotFinder();
  ShotFinder(const ShotFinder&) = delete;
  ShotFinder& operator=(const ShotFinder&) = delete;

  void add(const footage::FrameMeasure& frame);

  /// After the last frame, of which there was at least one: the shots, in order.
  std::vector<FoundShot> finish();

 private:
  class OpenShot;
  bool beginsShot(std::int64_t frame) const;
  void passUpTo(std::int64_t end);
  void close();

  const ShotOptions options_;
  const std::vector<std::int64_t> listed_;
  footage::CutFinder cuts_;
  std::deque<footage::FrameMeasure> waiting_;  // until it is known to which shot they belong
  std::int64_t next_ = 0;                      // the first of them
  std::unique_ptr<OpenShot> open_;
  std::vector<FoundShot> found_;
};

}  // namespace cli
