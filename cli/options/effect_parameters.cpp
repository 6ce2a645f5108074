// cli/options/effect_parameters.cpp — options carried into an instance's parameters, and read back.
#include "cli/options/effect_parameters.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

namespace cli {
namespace {

// The effect's names of its parameters.
constexpr const char* kSpeed = "Speed (1=accurate, 5=fast)";
constexpr const char* kUseSubrect = "Analyze within sub-rectangle";
constexpr const char* kCorner1 = "1st sub-rectangle corner";
constexpr const char* kCorner2 = "2nd sub-rectangle corner";
constexpr const char* kFavorBrighter = "Favor brighter pixels";
constexpr const char* kDontDeflicker = "Don't deflicker";
constexpr const char* kDeflickerMethod = "Deflicker method";
constexpr const char* kCorrectionMethod = "Correction method";
constexpr const char* kSmoothingFrames = "Number of smoothing frames";
constexpr const char* kAdjustClipping = "Adjust for clipping";
constexpr const char* kClippingPercent = "Adjust for clipping at %";
constexpr const char* kLuminance = "Luminance";
constexpr const char* kShiftSpread = "Shift spread";
constexpr const char* kNeedsAnalyze = "Needs Analyze";

// The corners of a rectangle on the picture as a player shows it, in stored pixels.
std::array<host::Point, 2> storedCorners(const std::array<double, 4>& rect,
                                         const media::ClipInfo& clip) {
  const double width = clip.width;
  const double height = clip.height;
  const auto stored = [&](double x, double y) -> host::Point {
    switch (clip.rotationDegrees) {
      case 90:
        return {y, height - x};
      case 180:
        return {width - x, height - y};
      case 270:
        return {width - y, x};
      default:
        return {x, y};
    }
  };
  return {stored(rect[0], rect[1]), stored(rect[2], rect[3])};
}

void applyDontDeflicker(const std::vector<FrameSpan>& spans, std::int64_t frames,
                        host::Parameter parameter) {
  std::vector<bool> left(static_cast<std::size_t>(frames), false);
  for (const FrameSpan& span : spans) {
    const std::int64_t last = std::min(span.last.value_or(frames - 1), frames - 1);
    for (std::int64_t f = span.first; f <= last; ++f) left[static_cast<std::size_t>(f)] = true;
  }
  parameter.removeKeyframes();
  bool now = !left.empty() && left.front();
  parameter.set(now ? 1.0 : 0.0);
  if (std::adjacent_find(left.begin(), left.end(), std::not_equal_to<>()) == left.end()) return;
  parameter.setAt(0, now ? 1.0 : 0.0);
  for (std::size_t f = 1; f < left.size(); ++f) {
    if (left[f] == now) continue;
    now = left[f];
    parameter.setAt(static_cast<std::int32_t>(f), now ? 1.0 : 0.0);
  }
}

void applyLuminance(const std::vector<LevelKey>& keys, host::Parameter luminance) {
  luminance.removeKeyframes();
  for (const LevelKey& key : keys) {
    const std::string level = fmt::format("{}", key.value);
    if (key.frame) {
      luminance.setTextAt(static_cast<std::int32_t>(*key.frame), level);
    } else {
      luminance.setText(level);
    }
  }
}

}  // namespace

void applyEffectOptions(const EffectOptions& options, const media::ClipInfo& clip,
                        const std::optional<footage::Rectangle>& matte, host::Instance& instance) {
  const auto set = [&](const char* name, const auto& value) {
    if (value) instance.param(name).set(static_cast<double>(*value));
  };
  set(kSpeed, options.speed);
  set(kFavorBrighter, options.favorBrighter);
  if (options.subrect) {
    std::optional<std::array<host::Point, 2>> corners;
    if (options.subrect->on) corners = storedCorners(options.subrect->value, clip);
    if (options.subrectAuto && matte) {
      corners = {
          host::Point{static_cast<double>(matte->left), static_cast<double>(matte->top)},
          host::Point{static_cast<double>(matte->right), static_cast<double>(matte->bottom)}};
    }
    if (corners) {
      instance.param(kCorner1).set((*corners)[0]);
      instance.param(kCorner2).set((*corners)[1]);
    }
    instance.param(kUseSubrect).set(corners ? 1.0 : 0.0);
  }
  if (options.dontDeflicker) {
    applyDontDeflicker(options.dontDeflicker->value, clip.frameCount,
                       instance.param(kDontDeflicker));
  }
  if (!options.luminance.empty()) applyLuminance(options.luminance, instance.param(kLuminance));
  if (!options.shiftSpread.empty()) {
    host::Parameter spread = instance.param(kShiftSpread);
    spread.removeKeyframes();
    for (const LevelKey& key : options.shiftSpread) {
      if (key.frame) {
        spread.setAt(static_cast<std::int32_t>(*key.frame), key.value);
      } else {
        spread.set(key.value);
      }
    }
  }
  set(kSmoothingFrames, options.smoothingFrames);
  set(kCorrectionMethod, options.correctionMethod);
  if (options.adjustClipping) {
    if (options.adjustClipping->on) {
      instance.param(kClippingPercent).set(options.adjustClipping->value);
    }
    instance.param(kAdjustClipping).set(options.adjustClipping->on ? 1.0 : 0.0);
  }
  // Last, and also when it stays as it is: the effect is not told of changed levels, and computes
  // its targets anew when told of the method.
  host::Parameter method = instance.param(kDeflickerMethod);
  int implied = static_cast<int>(method.value());
  if (options.target) implied = kMethodSmoothing;
  if (!options.luminance.empty()) implied = kMethodKeyframes;
  method.set(options.deflickerMethod.value_or(implied));
}

void followLevels(std::span<const double> levels, std::span<const double> spreads,
                  host::Instance& instance) {
  std::vector<LevelKey> keys;
  keys.reserve(levels.size());
  for (const double level : levels) {
    keys.push_back({static_cast<std::int64_t>(keys.size()), std::clamp(level, 0.0, 255.0)});
  }
  applyLuminance(keys, instance.param(kLuminance));
  if (!spreads.empty()) {
    host::Parameter spread = instance.param(kShiftSpread);
    spread.removeKeyframes();
    for (std::size_t i = 0; i < spreads.size(); ++i) {
      spread.setAt(static_cast<std::int32_t>(i), std::clamp(spreads[i], 0.0, 255.0));
    }
  }
  instance.param(kDeflickerMethod).set(kMethodKeyframes);
}

EffectSettings readSettings(host::Instance& instance) {
  EffectSettings settings;
  settings.keyframes = instance.param(kDeflickerMethod).value() == kMethodKeyframes;
  settings.correctionMethod = static_cast<int>(instance.param(kCorrectionMethod).value());
  settings.adjustClipping = instance.param(kAdjustClipping).value() != 0.0;
  settings.useSubrect = instance.param(kUseSubrect).value() != 0.0;
  const host::Point a = instance.param(kCorner1).point();
  const host::Point b = instance.param(kCorner2).point();
  const auto whole = [](double v) { return static_cast<int>(std::floor(v)); };
  settings.rect = {whole(std::min(a.x, b.x)), whole(std::min(a.y, b.y)), whole(std::max(a.x, b.x)),
                   whole(std::max(a.y, b.y))};
  settings.favorBrighter = instance.param(kFavorBrighter).value() != 0.0;
  settings.smoothingFrames = static_cast<int>(instance.param(kSmoothingFrames).value());
  settings.analyzed = instance.param(kNeedsAnalyze).value() != 0.0;
  return settings;
}

host::RenderPath renderPath(const EffectSettings& settings, host::Depth depth, host::Role role) {
  const bool acts = settings.adjustClipping && settings.correctionMethod != kCorrectGamma &&
                    depth == host::Depth::bits8;
  return acts || role == host::Role::premiere ? host::RenderPath::classic : host::RenderPath::smart;
}

void warnOfIdleOptions(const EffectOptions& options, const EffectSettings& settings,
                       Console& console) {
  if (!options.luminance.empty() && !settings.keyframes) {
    console.warn("--luminance does not act with --deflicker-method smoothing.");
  }
  const bool curve = options.target && isCurve(*options.target);
  if (options.smoothingFrames && settings.keyframes && !curve) {
    console.warn("--smoothing-frames does not act with --deflicker-method keyframes.");
  }
  if (!options.shiftSpread.empty() &&
      !(settings.keyframes && settings.correctionMethod == kCorrectShift)) {
    console.warn(
        "--shift-spread acts only with --deflicker-method keyframes and --correction-method "
        "shift together.");
  }
}

}  // namespace cli
