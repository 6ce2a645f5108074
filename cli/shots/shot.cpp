// cli/shots/shot.cpp — a shot on the workbench: its layer, and the effect applied to it.
#include "cli/shots/shot.h"

#include <utility>

#include "cli/error.h"

namespace cli {

Shot::Shot(host::Effect& effect, ClipSource& clip, ShotFindings found)
    : found_(std::move(found)), layer_(clip, found_.frames), instance_(effect, layer_) {}

Shot::Shot(host::Effect& effect, ClipSource& clip, ShotFindings found,
           const host::SavedInstance& saved)
    : found_(std::move(found)),
      layer_(clip, found_.frames),
      instance_(host::Instance::open(effect, layer_, saved)) {}

Levels Shot::levels() {
  return readLevels(instance_.save().sequenceData);
}

}  // namespace cli
