// cli/shots/shot.h — a shot on the workbench: its layer, and the effect applied to it.
#pragma once

#include <deque>
#include <utility>
#include <vector>

#include "cli/job/clip_source.h"
#include "cli/shots/levels.h"
#include "cli/shots/shot_findings.h"
#include "cli/shots/shot_layer.h"
#include "footage/luma_profile.h"
#include "footage/luminance_quantiles.h"
#include "host/effect.h"
#include "host/instance.h"

namespace cli {

/// Effect and clip outlive the shot.
class Shot {
 public:
  /// The effect newly applied, or as it was saved. Throws host::Error.
  Shot(host::Effect& effect, ClipSource& clip, ShotFindings found);
  Shot(host::Effect& effect, ClipSource& clip, ShotFindings found,
       const host::SavedInstance& saved);
  Shot(const Shot&) = delete;
  Shot& operator=(const Shot&) = delete;

  const ShotFindings& found() const noexcept { return found_; }
  /// Findings about the same frames.
  void setFound(ShotFindings found) { found_ = std::move(found); }
  const ShotFrames& frames() const noexcept { return found_.frames; }
  ShotLayer& layer() noexcept { return layer_; }
  host::Instance& instance() noexcept { return instance_; }

  /// What the effect holds of each picture now.
  Levels levels();

  /// Of each picture, over the rectangle that the user asks for; bars are among it. Empty when the
  /// pictures were not looked at in this run.
  std::deque<footage::LuminanceQuantiles> light;
  /// Over the rectangle that is analysed. Empty where no curve is followed.
  std::vector<footage::LumaProfile> lumas;

 private:
  ShotFindings found_;
  ShotLayer layer_;
  host::Instance instance_;
};

}  // namespace cli
