// cli/effect_options.cpp — the effect's parameters as options of the command line.
#include "cli/effect_options.h"

#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <charconv>
#include <cmath>

#include "cli/error.h"

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

constexpr int kMethodKeyframes = 1;
constexpr int kMethodShift = 2;
constexpr int kMethodGamma = 3;

constexpr const char* kDeflickeringGroup = "Deflickering";
constexpr const char* kAnalysisGroup = "Analysis (changing one of these analyses anew)";

struct Choice {
  const char* name;
  int value;
};
constexpr Choice kDeflickerMethods[] = {{"keyframes", kMethodKeyframes}, {"smoothing", 2}};
constexpr Choice kCorrectionMethods[] = {
    {"linear", 1}, {"shift", kMethodShift}, {"gamma", kMethodGamma}};

std::optional<double> parseNumber(const std::string& text) {
  double value = 0.0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (text.empty() || error != std::errc() || stop != end || !std::isfinite(value)) return {};
  return value;
}

[[noreturn]] void refuse(const std::string& option, const std::string& why) {
  throw CLI::ValidationError(option, why);
}

template <std::size_t N>
int parseChoice(const std::string& option, const std::string& text, const Choice (&choices)[N]) {
  std::string names;
  for (const Choice& choice : choices) {
    if (text == choice.name) return choice.value;
    names += fmt::format("{}{}", names.empty() ? "" : ", ", choice.name);
  }
  refuse(option, fmt::format("'{}' is none of: {}.", text, names));
}

double parseWithin(const std::string& option, const std::string& text, double low, double high) {
  const auto value = parseNumber(text);
  if (!value || *value < low || *value > high) {
    refuse(option, fmt::format("'{}' is no number from {} to {}.", text, low, high));
  }
  return *value;
}

int parseWhole(const std::string& option, const std::string& text, int low, int high) {
  const double value = parseWithin(option, text, low, high);
  if (value != std::floor(value)) {
    refuse(option, fmt::format("'{}' is no whole number from {} to {}.", text, low, high));
  }
  return static_cast<int>(value);
}

LevelKey parseLevelKey(const std::string& option, const std::string& text) {
  LevelKey key;
  const auto equals = text.find('=');
  if (equals != std::string::npos) {
    key.frame = parseFrame(text.substr(0, equals));
    if (!key.frame) refuse(option, fmt::format("'{}' is not FRAME=LEVEL or LEVEL.", text));
  }
  const std::string level = equals == std::string::npos ? text : text.substr(equals + 1);
  key.value = parseWithin(option, level, 0.0, 255.0);
  return key;
}

// One value for the whole clip, or keyframes: not both.
void addLevelKey(std::vector<LevelKey>& keys, const std::string& option, const std::string& text) {
  const LevelKey key = parseLevelKey(option, text);
  if (!keys.empty() && (!key.frame || !keys.front().frame)) {
    refuse(option, "Give one LEVEL for the whole clip, or FRAME=LEVEL each time.");
  }
  for (const LevelKey& other : keys) {
    if (other.frame == key.frame) {
      refuse(option, fmt::format("Frame {} is given twice.", *key.frame));
    }
  }
  keys.push_back(key);
}

std::array<double, 4> parseRect(const std::string& option, const std::string& text) {
  std::array<double, 4> rect{};
  std::size_t start = 0;
  for (std::size_t i = 0; i < rect.size(); ++i) {
    const auto comma = text.find(',', start);
    const bool last = i + 1 == rect.size();
    const auto value = parseFrame(text.substr(start, comma - start));
    if (!value || last != (comma == std::string::npos)) {
      refuse(option, fmt::format("'{}' is not X1,Y1,X2,Y2 in whole pixels.", text));
    }
    rect[i] = static_cast<double>(*value);
    start = comma + 1;
  }
  if (rect[0] == rect[2] || rect[1] == rect[3]) {
    refuse(option, fmt::format("The rectangle {} is empty.", text));
  }
  return rect;
}

using Texts = std::vector<std::string>;

// An option whose values are handed over one by one, in the order given.
void addEach(CLI::App& command, const std::string& name, const std::string& value,
             const std::string& group, const std::string& help,
             const std::function<void(const std::string&)>& take) {
  command
      .add_option_function<Texts>(
          name,
          [take](const Texts& texts) {
            for (const std::string& text : texts) take(text);
          },
          help)
      ->allow_extra_args(false)
      ->type_name(value)
      ->group(group);
}

void addOne(CLI::App& command, const std::string& name, const std::string& value,
            const std::string& group, const std::string& help,
            const std::function<void(const std::string&)>& take) {
  command.add_option_function<std::string>(name, take, help)->type_name(value)->group(group);
}

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

}  // namespace

void addEffectOptions(CLI::App& command, EffectOptions& options) {
  const std::string deflickering = kDeflickeringGroup;
  const std::string analysis = kAnalysisGroup;
  addOne(command, "--deflicker-method", "METHOD", deflickering,
         "What each frame is brought to: 'smoothing', the mean of the frames around it, or "
         "'keyframes', the levels given with --luminance. Default: smoothing.",
         [&options](const std::string& text) {
           options.deflickerMethod = parseChoice("--deflicker-method", text, kDeflickerMethods);
         });
  addOne(command, "--smoothing-frames", "N", deflickering,
         "Frames averaged on either side of each frame by 'smoothing', 1 to 60; more steadies "
         "slower changes, also wanted ones. Default: 30.",
         [&options](const std::string& text) {
           options.smoothingFrames = parseWhole("--smoothing-frames", text, 1, 60);
         });
  addEach(
      command, "--luminance", "[FRAME=]LEVEL", deflickering,
      "Level for 'keyframes', 0 to 255 on the scale of mean brightness, as a keyframe at a "
      "frame or for the whole clip; between keyframes it runs evenly. Repeatable. Implies "
      "--deflicker-method keyframes. Default: 128.",
      [&options](const std::string& text) { addLevelKey(options.luminance, "--luminance", text); });
  addOne(command, "--correction-method", "METHOD", deflickering,
         "How a frame gets there: 'linear' multiplies (exposure changes), 'shift' adds and "
         "stretches about the mean (fogged or faded frames), 'gamma' bends the middle and keeps "
         "black and white. Default: linear.",
         [&options](const std::string& text) {
           options.correctionMethod = parseChoice("--correction-method", text, kCorrectionMethods);
         });
  addEach(command, "--shift-spread", "[FRAME=]LEVEL", deflickering,
          "Spread of brightness to reach with 'keyframes' and 'shift' together, 0 to 255 levels, "
          "as a keyframe or for the whole clip. Repeatable. Default: 0.",
          [&options](const std::string& text) {
            addLevelKey(options.shiftSpread, "--shift-spread", text);
          });
  addOne(command, "--adjust-clipping", "PERCENT|off", deflickering,
         "Keep detail near white: levels above this percentage of white, 10 to 100, are squeezed "
         "instead of cut off. Acts on 8-bit footage with 'linear' and 'shift'. Default: off.",
         [&options](const std::string& text) {
           if (text == "off") {
             options.adjustClipping = Switch<double>{};
           } else {
             options.adjustClipping =
                 Switch<double>{true, parseWithin("--adjust-clipping", text, 10.0, 100.0)};
           }
         });
  addOne(
      command, "--speed", "N", analysis,
      "Measure every N-th pixel each way, 1 (accurate) to 20 (fast); small pictures are "
      "measured more finely. Default: 5.",
      [&options](const std::string& text) { options.speed = parseWhole("--speed", text, 1, 20); });
  addOne(command, "--subrect", "X1,Y1,X2,Y2|off", analysis,
         "Measure only between two corners, in pixels from the top left of the picture as shown; "
         "the second corner is just outside. For scenes with moving bright things. Default: off, "
         "the whole picture.",
         [&options](const std::string& text) {
           using Rect = Switch<std::array<double, 4>>;
           options.subrect = text == "off" ? Rect{} : Rect{true, parseRect("--subrect", text)};
         });
  command
      .add_flag_function(
          "--favor-brighter,!--no-favor-brighter",
          [&options](std::int64_t count) { options.favorBrighter = count > 0; },
          "Let bright pixels weigh more, for dark scenes with a flickering lamp. Default: off.")
      ->group(analysis);
  addEach(command, "--dont-deflicker", "A..B|none", analysis,
          "Leave these frames as they are and out of every mean; A.., ..B and a single frame "
          "serve too. Repeatable. Default: none.",
          [&options](const std::string& text) {
            if (!options.dontDeflicker) options.dontDeflicker.emplace();
            if (text == "none") return;
            const auto span = parseFrameSpan(text);
            if (!span) {
              refuse("--dont-deflicker",
                     fmt::format("'{}' is no range of frames such as 10..20.", text));
            }
            options.dontDeflicker->on = true;
            options.dontDeflicker->value.push_back(*span);
          });
}

void checkAgainstClip(const EffectOptions& options, const media::ClipInfo& clip) {
  if (options.subrect && options.subrect->on) {
    const bool turned = clip.rotationDegrees % 180 != 0;
    const int width = turned ? clip.height : clip.width;
    const int height = turned ? clip.width : clip.height;
    const auto& r = options.subrect->value;
    if (std::max(r[0], r[2]) > width || std::max(r[1], r[3]) > height) {
      throw UsageError(
          fmt::format("--subrect {},{},{},{} reaches outside the picture, which is {} x {} pixels.",
                      r[0], r[1], r[2], r[3], width, height));
    }
  }
  const auto checkKeys = [&](const std::vector<LevelKey>& keys, const char* option) {
    for (const LevelKey& key : keys) {
      if (!key.frame || *key.frame < clip.frameCount) continue;
      throw UsageError(fmt::format("{} {}={} is beyond the clip, whose frames are 0..{}.", option,
                                   *key.frame, key.value, clip.frameCount - 1));
    }
  };
  checkKeys(options.luminance, "--luminance");
  checkKeys(options.shiftSpread, "--shift-spread");
  if (options.dontDeflicker) {
    for (const FrameSpan& span : options.dontDeflicker->value) {
      lastFrameIn(span, clip.frameCount, "--dont-deflicker");
    }
  }
}

void applyEffectOptions(const EffectOptions& options, const media::ClipInfo& clip,
                        host::Instance& instance) {
  const auto set = [&](const char* name, const auto& value) {
    if (value) instance.param(name).set(static_cast<double>(*value));
  };
  set(kSpeed, options.speed);
  set(kFavorBrighter, options.favorBrighter);
  if (options.subrect) {
    if (options.subrect->on) {
      const auto corners = storedCorners(options.subrect->value, clip);
      instance.param(kCorner1).set(corners[0]);
      instance.param(kCorner2).set(corners[1]);
    }
    instance.param(kUseSubrect).set(options.subrect->on ? 1.0 : 0.0);
  }
  if (options.dontDeflicker) {
    applyDontDeflicker(options.dontDeflicker->value, clip.frameCount,
                       instance.param(kDontDeflicker));
  }
  if (!options.luminance.empty()) {
    host::Parameter luminance = instance.param(kLuminance);
    luminance.removeKeyframes();
    for (const LevelKey& key : options.luminance) {
      const std::string level = fmt::format("{}", key.value);
      if (key.frame) {
        luminance.setTextAt(static_cast<std::int32_t>(*key.frame), level);
      } else {
        luminance.setText(level);
      }
    }
  }
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
  const int implied =
      options.luminance.empty() ? static_cast<int>(method.value()) : kMethodKeyframes;
  method.set(options.deflickerMethod.value_or(implied));
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

void warnOfIdleOptions(const EffectOptions& options, const EffectSettings& settings,
                       Console& console) {
  if (!options.luminance.empty() && !settings.keyframes) {
    console.warn("--luminance does not act with --deflicker-method smoothing.");
  }
  if (options.smoothingFrames && settings.keyframes) {
    console.warn("--smoothing-frames does not act with --deflicker-method keyframes.");
  }
  if (!options.shiftSpread.empty() &&
      !(settings.keyframes && settings.correctionMethod == kMethodShift)) {
    console.warn(
        "--shift-spread acts only with --deflicker-method keyframes and --correction-method "
        "shift together.");
  }
}

}  // namespace cli
