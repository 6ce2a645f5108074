// cli/shots/levels.h — what the effect's saved data says of each frame.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "cli/shots/shot_frames.h"

namespace cli {

/// One entry a frame, on the 0..255 scale; -1 = not analysed.
struct Levels {
  std::vector<double> input;
  std::vector<double> inputSpread;
  std::vector<double> desired;
  std::vector<double> desiredSpread;
  std::vector<bool> analyzed;
  bool complete = false;  ///< every frame is analysed
  /// Desired over input: what 'linear' multiplies by. 1 where there is nothing to correct.
  double gain(std::size_t frame) const {
    return input[frame] > 0.0 ? desired[frame] / input[frame] : 1.0;
  }

  std::string status;  ///< "8 of 8 frames analyzed"
};

/// Adds the levels of a shot, one a picture, to those of the clip, one a frame. Throws Failure when
/// there are more or fewer than the shot has pictures.
void appendShot(Levels& clip, const Levels& shot, const ShotFrames& frames);

/// Reads flat sequence data. Throws Failure when it is not what the effect writes.
Levels readLevels(std::span<const std::byte> sequenceData);

}  // namespace cli
