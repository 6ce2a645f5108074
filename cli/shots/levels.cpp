// cli/shots/levels.cpp — what the effect's saved data says of each frame.
#include "cli/shots/levels.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>

#include "cli/error.h"
#include "stats/flat_image.h"

namespace cli {

void appendShot(Levels& clip, const Levels& shot, const ShotFrames& frames) {
  if (shot.input.size() != static_cast<std::size_t>(frames.pictureCount())) {
    throw Failure("The analysis data do not fit the shots; analyse the clip again.");
  }
  const bool first = clip.input.empty();
  for (std::int64_t frame = frames.first(); frame <= frames.last(); ++frame) {
    const auto picture = static_cast<std::size_t>(frames.pictureOf(frame));
    clip.input.push_back(shot.input[picture]);
    clip.inputSpread.push_back(shot.inputSpread[picture]);
    clip.desired.push_back(shot.desired[picture]);
    clip.desiredSpread.push_back(shot.desiredSpread[picture]);
    clip.analyzed.push_back(shot.analyzed[picture]);
  }
  clip.complete = shot.complete && (first || clip.complete);
  clip.status = fmt::format("{} of {} frames analyzed",
                            std::count(clip.analyzed.begin(), clip.analyzed.end(), true),
                            clip.analyzed.size());
}

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
