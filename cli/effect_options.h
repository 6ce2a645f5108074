// cli/effect_options.h — the effect's parameters as options of the command line.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "cli/console.h"
#include "cli/frame_span.h"
#include "host/instance.h"
#include "media/clip_info.h"

namespace CLI {
class App;
}

namespace cli {

/// FRAME=VALUE, or VALUE alone for the whole clip.
struct LevelKey {
  std::optional<std::int64_t> frame;
  double value = 0.0;
};

/// Which of the two things a switch-like option was told.
template <typename Value>
struct Switch {
  bool on = false;
  Value value{};
};

/// What the user asked for; what is not set keeps the effect's default, or what the project holds.
struct EffectOptions {
  std::optional<int> deflickerMethod;   ///< popup value: 1 keyframes, 2 smoothing
  std::optional<int> correctionMethod;  ///< popup value: 1 linear, 2 shift, 3 gamma
  std::optional<int> smoothingFrames;
  std::optional<Switch<double>> adjustClipping;          ///< percent
  std::optional<Switch<std::array<double, 4>>> subrect;  ///< x1 y1 x2 y2, as shown by a player
  std::optional<int> speed;
  std::optional<bool> favorBrighter;
  std::vector<LevelKey> luminance;
  std::vector<LevelKey> shiftSpread;
  std::optional<Switch<std::vector<FrameSpan>>> dontDeflicker;
};

/// Adds the options to a command, in the groups "Deflickering" and "Analysis".
void addEffectOptions(CLI::App& command, EffectOptions& options);

/// Throws UsageError when a frame or the rectangle is not within the clip.
void checkAgainstClip(const EffectOptions& options, const media::ClipInfo& clip);

/// Edits the instance's parameters as a user would, in an order that leaves the effect's targets
/// up to date. Call checkAgainstClip() first.
void applyEffectOptions(const EffectOptions& options, const media::ClipInfo& clip,
                        host::Instance& instance);

/// The settings that decide how frames are rendered, read back from the instance.
struct EffectSettings {
  bool keyframes = false;
  int correctionMethod = 1;
  bool adjustClipping = false;
  bool useSubrect = false;
  std::array<int, 4> rect{};  ///< left, top, right, bottom in stored pixels
  bool favorBrighter = false;
  int smoothingFrames = 30;
  bool analyzed = false;  ///< the effect takes its analysis for done
};
EffectSettings readSettings(host::Instance& instance);

/// Says which of the options given cannot act together with the others.
void warnOfIdleOptions(const EffectOptions& options, const EffectSettings& settings,
                       Console& console);

}  // namespace cli
