// cli/levels.cpp — what the effect's saved data says of each frame.
#include "cli/levels.h"

#include <algorithm>
#include <cstring>

#include "cli/error.h"
#include "stats/flat_image.h"

namespace cli {

Levels readLevels(std::span<const std::byte> sequenceData) {
  const auto image = varilum::readFlatImage(sequenceData);
  if (!image) throw Failure("The analysis data are damaged; analyse the clip again.");
  const auto frames = static_cast<std::size_t>(image->frameCount);
  Levels levels;
  for (auto* list : {&levels.input, &levels.inputSpread, &levels.desired, &levels.desiredSpread}) {
    list->resize(frames);
  }
  varilum::restoreInputLevels(image->inputLuminance, levels.input);
  varilum::restoreInputLevels(image->inputSpread, levels.inputSpread);
  varilum::restoreDesiredLevels(image->desiredLuminance, levels.desired);
  varilum::restoreDesiredLevels(image->desiredSpread, levels.desiredSpread);
  levels.analyzed.resize(frames);
  for (std::size_t i = 0; i < frames && !image->frameStats.empty(); ++i) {
    varilum::FrameStats stats;
    std::memcpy(&stats, image->frameStats.data() + i * sizeof(stats), sizeof(stats));
    levels.analyzed[i] = stats.analyzed != 0;
  }
  levels.complete = image->header.analysisComplete != 0;
  const char* text = image->header.statusText;
  levels.status.assign(text, std::find(text, text + sizeof(image->header.statusText), '\0'));
  return levels;
}

}  // namespace cli
