// cli/shots/shot_settings.h — options that count in the clip's frames, as they hold within one
// shot.
#pragma once

#include "cli/options/effect_options.h"
#include "cli/shots/shot_findings.h"

namespace cli {

/// The same options with frames counted in the pictures of the shot. Levels between keyframes of
/// the whole clip stay what they were; outliers to be left are among the frames not to deflicker.
EffectOptions optionsWithin(const ShotFindings& shot, const EffectOptions& clip);

}  // namespace cli
