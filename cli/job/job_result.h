// cli/job/job_result.h — what came of deflickering a clip, frame by frame and shot by shot.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "cli/options/effect_parameters.h"
#include "cli/shots/shot_findings.h"

namespace cli {

struct FrameResult {
  double input = 0.0;   ///< measured level, 0..255, over what the shot was measured in
  double target = 0.0;  ///< level wanted; the input's where the frame was to be left
  double output = 0.0;  ///< measured as it was handed to the encoder
  std::size_t shot = 0;
  std::int64_t original = 0;  ///< the frame that this one repeats, or itself
  bool outlier = false;       ///< one of those listed with the shot
  bool untouched = false;     ///< written from its original picture
};

/// In percent; see footage/flicker.h.
struct FlickerFigures {
  double flicker = 0.0;
  double jerk = 0.0;
};

struct ShotResult {
  ShotFindings found;  ///< frames of the whole shot, also when only some of them were rendered
  EffectSettings settings;
  FlickerFigures before;  ///< of the frames that were rendered; none of them: zero
  FlickerFigures after;
  bool passedThrough = false;  ///< it would have come out worse, so all of it was left as it was
};

struct JobResult {
  std::int64_t first = 0;           ///< frame of the clip that `frames` begins with
  std::vector<FrameResult> frames;  ///< those that were rendered, in order
  std::vector<ShotResult> shots;    ///< all of the clip's
  std::string target;               ///< as --target has it
  host::Depth depth = host::Depth::bits8;
  double seconds = 0.0;  ///< rendering and encoding
};

FlickerFigures figuresOf(std::span<const double> levels);

/// Of a whole clip with one level a frame, put together from those of its shots: steps at cuts are
/// no flicker.
FlickerFigures figuresOf(std::span<const double> levels, std::span<const ShotFindings> shots);

/// Whether a shot is better left alone: it flickers more without jerking far less for it, or jerks
/// more without flickering less by as much.
bool isWorse(const FlickerFigures& after, const FlickerFigures& before);

/// Fills in the figures of each shot from the frames.
void measureShots(JobResult& job);

/// Of all frames rendered, put together from the figures of the shots.
FlickerFigures figuresBefore(const JobResult& job);
FlickerFigures figuresAfter(const JobResult& job);

}  // namespace cli
