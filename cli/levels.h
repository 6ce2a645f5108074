// cli/levels.h — what the effect's saved data says of each frame.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace cli {

/// One entry a frame, on the 0..255 scale; -1 = not analysed.
struct Levels {
  std::vector<double> input;
  std::vector<double> inputSpread;
  std::vector<double> desired;
  std::vector<double> desiredSpread;
  std::vector<bool> analyzed;
  bool complete = false;  ///< every frame is analysed
  std::string status;     ///< the effect's own words
};

/// Reads flat sequence data. Throws Failure when it is not what the effect writes.
Levels readLevels(std::span<const std::byte> sequenceData);

}  // namespace cli
