// cli/options/effect_parameters.h — options carried into an instance's parameters, and read back.
#pragma once

#include <array>
#include <optional>
#include <span>

#include "cli/options/effect_options.h"
#include "cli/terminal/console.h"
#include "footage/matte.h"
#include "host/instance.h"
#include "media/clip_info.h"

namespace cli {

// Values of the popups.
inline constexpr int kMethodKeyframes = 1;
inline constexpr int kMethodSmoothing = 2;
inline constexpr int kCorrectLinear = 1;
inline constexpr int kCorrectShift = 2;
inline constexpr int kCorrectGamma = 3;

/// Edits the instance's parameters as a user would, in an order that leaves the effect's targets
/// up to date. Frames in the options count in the instance's layer; `clip` gives the picture's
/// rotation and the layer's number of frames. `matte` is what an automatic rectangle takes.
void applyEffectOptions(const EffectOptions& options, const media::ClipInfo& clip,
                        const std::optional<footage::Rectangle>& matte, host::Instance& instance);

/// Sets a luminance keyframe on every frame of the instance's layer, 0 to 255, and the deflicker
/// method that follows them. `spreads`, if not empty, does the same for the spread that 'shift'
/// brings frames to.
void followLevels(std::span<const double> levels, std::span<const double> spreads,
                  host::Instance& instance);

/// The settings that decide how frames are rendered, read back from the instance.
struct EffectSettings {
  bool keyframes = false;
  int correctionMethod = kCorrectLinear;
  bool adjustClipping = false;
  bool useSubrect = false;
  std::array<int, 4> rect{};  ///< left, top, right, bottom in stored pixels
  bool favorBrighter = false;
  int smoothingFrames = 30;
  bool analyzed = false;  ///< the effect takes its analysis for done
};
EffectSettings readSettings(host::Instance& instance);

/// How frames are rendered with these settings: "Adjust for clipping" works in the classic render
/// at 8 bits alone, and one of the hosts knows no other.
host::RenderPath renderPath(const EffectSettings& settings, host::Depth depth, host::Role role);

/// Says which of the options given cannot act together with the others.
void warnOfIdleOptions(const EffectOptions& options, const EffectSettings& settings,
                       Console& console);

}  // namespace cli
