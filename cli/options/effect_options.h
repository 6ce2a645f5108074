// cli/options/effect_options.h — the effect's parameters as options of the command line.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/options/frame_span.h"
#include "cli/shots/target.h"
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

/// The speed that clips are analysed at unless asked otherwise. The effect's own, 5, takes so few
/// pixels that the chance of which ones shows as flicker where there was next to none.
inline constexpr int kUsualSpeed = 2;

/// What the user asked for; what is not set keeps the effect's default, or what the project holds.
struct EffectOptions {
  std::optional<int> deflickerMethod;   ///< popup value: 1 keyframes, 2 smoothing
  std::optional<int> correctionMethod;  ///< popup value: 1 linear, 2 shift, 3 gamma
  std::optional<Target> target;
  std::optional<int> smoothingFrames;
  std::optional<Switch<double>> adjustClipping;          ///< percent
  std::optional<Switch<std::array<double, 4>>> subrect;  ///< x1 y1 x2 y2, as shown by a player
  bool subrectAuto = false;  ///< the live picture of each shot, if it has bars; subrect is off then
  std::optional<int> speed;
  std::optional<bool> favorBrighter;
  std::vector<LevelKey> luminance;
  std::vector<LevelKey> shiftSpread;
  std::optional<Switch<std::vector<FrameSpan>>> dontDeflicker;
};

/// The name that --correction-method has for a popup value.
std::string_view correctionName(int popupValue);

bool asksForAnything(const EffectOptions& options) noexcept;

/// Whether levels are asked for frame by frame, so that a held picture may have to change.
bool setsLevelsByFrame(const EffectOptions& options) noexcept;

/// Adds the options to a command, in the groups "Deflickering" and "Analysis".
void addEffectOptions(CLI::App& command, EffectOptions& options);

/// Throws UsageError when a frame or the rectangle is not within the clip, or options contradict
/// one another.
void checkAgainstClip(const EffectOptions& options, const media::ClipInfo& clip);

}  // namespace cli
