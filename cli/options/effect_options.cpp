// cli/options/effect_options.cpp — the effect's parameters as options of the command line.
#include "cli/options/effect_options.h"

#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <charconv>
#include <cmath>

#include "cli/error.h"
#include "cli/options/effect_parameters.h"

namespace cli {
namespace {

constexpr const char* kDeflickeringGroup = "Deflickering";
constexpr const char* kAnalysisGroup = "Analysis (changing one of these analyses anew)";

struct Choice {
  const char* name;
  int value;
};
constexpr Choice kDeflickerMethods[] = {{"keyframes", kMethodKeyframes},
                                        {"smoothing", kMethodSmoothing}};
constexpr Choice kCorrectionMethods[] = {
    {"linear", kCorrectLinear}, {"shift", kCorrectShift}, {"gamma", kCorrectGamma}};

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

void checkTarget(const EffectOptions& options, std::int64_t frameCount) {
  if (!options.luminance.empty()) throw UsageError("Give --target or --luminance, not both.");
  if (options.deflickerMethod) {
    throw UsageError("--target chooses the deflicker method; leave --deflicker-method out.");
  }
  const Target& target = *options.target;
  const std::int64_t last = target.kind == Target::Kind::ramp     ? target.to
                            : target.kind == Target::Kind::points ? target.points.back().frame
                                                                  : 0;
  if (last >= frameCount) {
    throw UsageError(fmt::format("--target: frame {} is beyond the clip, whose frames are 0..{}.",
                                 last, frameCount - 1));
  }
}

}  // namespace

std::string_view correctionName(int popupValue) {
  for (const Choice& choice : kCorrectionMethods) {
    if (choice.value == popupValue) return choice.name;
  }
  return "unknown";
}

bool asksForAnything(const EffectOptions& o) noexcept {
  return o.deflickerMethod || o.correctionMethod || o.target || o.smoothingFrames ||
         o.adjustClipping || o.subrect || o.speed || o.favorBrighter || !o.luminance.empty() ||
         !o.shiftSpread.empty() || o.dontDeflicker;
}

bool setsLevelsByFrame(const EffectOptions& options) noexcept {
  using Kind = Target::Kind;
  const bool drawn = options.target &&
                     (options.target->kind == Kind::ramp || options.target->kind == Kind::points);
  return drawn || options.luminance.size() > 1 || options.shiftSpread.size() > 1;
}

void addEffectOptions(CLI::App& command, EffectOptions& options) {
  const std::string deflickering = kDeflickeringGroup;
  const std::string analysis = kAnalysisGroup;
  addOne(command, "--deflicker-method", "METHOD", deflickering,
         "What each frame is brought to: 'smoothing', the mean of the frames around it, or "
         "'keyframes', the levels given with --luminance. Default: smoothing.",
         [&options](const std::string& text) {
           options.deflickerMethod = parseChoice("--deflicker-method", text, kDeflickerMethods);
         });
  addOne(command, "--target", "TARGET", deflickering,
         fmt::format("What the levels of a shot follow: {}. But for 'smoothing', which the effect "
                     "does itself, the curve becomes keyframes. Default: smoothing.",
                     targetHelp()),
         [&options](const std::string& text) { options.target = parseTarget(text); });
  addOne(command, "--smoothing-frames", "N", deflickering,
         "Frames looked at on either side of each frame, 1 to 60; more steadies slower changes, "
         "also wanted ones. Default: 30.",
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
      "measured more finely. Default: 2.",
      [&options](const std::string& text) { options.speed = parseWhole("--speed", text, 1, 20); });
  addOne(command, "--subrect", "X1,Y1,X2,Y2|auto|off", analysis,
         "Measure only between two corners, in pixels from the top left of the picture as shown; "
         "the second corner is just outside. For scenes with moving bright things. 'auto': without "
         "the bars of letterbox and pillar box, where there are any. Default: off, the whole "
         "picture.",
         [&options](const std::string& text) {
           using Rect = Switch<std::array<double, 4>>;
           options.subrectAuto = text == "auto";
           options.subrect = text == "off" || options.subrectAuto
                                 ? Rect{}
                                 : Rect{true, parseRect("--subrect", text)};
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
  if (options.target) checkTarget(options, clip.frameCount);
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

}  // namespace cli
