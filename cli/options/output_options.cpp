// cli/options/output_options.cpp — how clips are read and written, as options of the command line.
#include "cli/options/output_options.h"

#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <CLI/Validators.hpp>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <numeric>

#include "cli/error.h"
#include "cli/options/memory_size.h"
#include "cli/program_files.h"

namespace cli {
namespace {

constexpr const char* kEncodingGroup = "Encoding";
constexpr const char* kReadingGroup = "Image sequences";
constexpr const char* kGeneralGroup = "General";

// "24", "23.976", "24000/1001".
media::Rational parseRate(const std::string& text) {
  const auto part = [&](const std::string& digits) {
    double value = 0.0;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value);
    if (digits.empty() || error != std::errc() || stop != end || !(value > 0.0) || value > 1e6) {
      throw CLI::ValidationError(
          "--fps", fmt::format("'{}' is no frame rate such as 25 or 24000/1001.", text));
    }
    return value;
  };
  const auto slash = text.find('/');
  if (slash != std::string::npos) {
    return {static_cast<int>(std::lround(part(text.substr(0, slash)))),
            static_cast<int>(std::lround(part(text.substr(slash + 1))))};
  }
  const double rate = part(text);
  const int whole = static_cast<int>(std::lround(rate));
  if (std::abs(rate - whole) < 1e-9) return {whole, 1};
  // 23.976, 29.97, 59.94 stand for a whole rate slowed by 1000/1001.
  const int above = static_cast<int>(std::ceil(rate));
  if (std::abs(rate - above * 1000.0 / 1001.0) < 0.005) return {above * 1000, 1001};
  const int thousandths = static_cast<int>(std::lround(rate * 1000.0));
  const int divisor = std::gcd(thousandths, 1000);
  return {thousandths / divisor, 1000 / divisor};
}

}  // namespace

void addOutputOptions(CLI::App& command, OutputOptions& options) {
  media::WriteOptions& write = options.write;
  command
      .add_option("--codec", write.codec,
                  "Encoder or codec, as FFmpeg names it, such as libx264, libx265, prores_ks, "
                  "ffv1. Default: the input's codec where it can be written.")
      ->type_name("NAME")
      ->group(kEncodingGroup);
  command
      .add_option("--crf,--quality", write.quality,
                  "Quality on the encoder's own scale; for x264 and x265 0 to 51, lower is "
                  "better. Default: no visible loss.")
      ->type_name("NUMBER")
      ->group(kEncodingGroup);
  command
      .add_option("--preset", write.preset,
                  "Speed against size of encoders that have presets, such as fast or slow.")
      ->type_name("NAME")
      ->group(kEncodingGroup);
  command
      .add_option("--pixel-format", write.pixelFormat,
                  "As FFmpeg names it, such as yuv422p10le. Default: the input's.")
      ->type_name("NAME")
      ->group(kEncodingGroup);
  command
      .add_option_function<std::vector<std::string>>(
          "--encoder-option",
          [&write](const std::vector<std::string>& texts) {
            for (const std::string& text : texts) {
              const auto equals = text.find('=');
              if (equals == std::string::npos || equals == 0) {
                throw CLI::ValidationError("--encoder-option",
                                           fmt::format("'{}' is not KEY=VALUE.", text));
              }
              write.encoderOptions.emplace_back(text.substr(0, equals), text.substr(equals + 1));
            }
          },
          "Any further option of the encoder. Repeatable.")
      ->allow_extra_args(false)
      ->type_name("KEY=VALUE")
      ->group(kEncodingGroup);
  command.add_flag("!--no-audio", write.audio, "Leave the sound out.")->group(kEncodingGroup);
  command
      .add_option_function<std::string>(
          "--depth",
          [&options](const std::string& text) {
            if (text == "8") {
              options.depth = host::Depth::bits8;
            } else if (text == "16") {
              options.depth = host::Depth::bits16;
            } else if (text == "32") {
              options.depth = host::Depth::float32;
            } else {
              throw CLI::ValidationError("--depth",
                                         fmt::format("'{}' is none of: 8, 16, 32.", text));
            }
          },
          "Bits a channel while rendering: 8, 16 or 32 (float). Default: 8 for 8-bit footage, 16 "
          "for 9 to 16 bits, 32 for float.")
      ->type_name("BITS")
      ->group(kEncodingGroup);
}

void addReadOptions(CLI::App& command, media::ReadOptions& options) {
  command
      .add_option_function<std::string>(
          "--fps", [&options](const std::string& text) { options.frameRate = parseRate(text); },
          "Frames a second, such as 25 or 24000/1001. Default: 24.")
      ->type_name("RATE")
      ->group(kReadingGroup);
  command
      .add_option("--start-number", options.startNumber,
                  "Number of the first picture to read. Default: the lowest there is.")
      ->check(CLI::NonNegativeNumber)
      ->type_name("N")
      ->group(kReadingGroup);
}

void addForceOption(CLI::App& command, bool& force) {
  command.add_flag("--force", force, "Replace files that are there already.")->group(kGeneralGroup);
}

void addGeneralOptions(CLI::App& command, WorkOptions& work, ConsoleOptions& console) {
  command
      .add_option("--threads", work.threads,
                  "Frames rendered at once, 1 to 64; the result is the same. Default: one a core.")
      ->check(CLI::Range(1, 64))
      ->type_name("N")
      ->group(kGeneralGroup);
  command
      .add_option_function<std::string>(
          "--memory",
          [&work](const std::string& text) {
            work.memory = parseMemorySize(text);
            if (!work.memory) {
              throw CLI::ValidationError(
                  "--memory", fmt::format("'{}' is no size such as 2G, 512M or 0.", text));
            }
          },
          "Memory for decoded frames, such as 2G or 512M, so that a clip that fits is decoded "
          "once; "
          "0 keeps none. Default: a quarter of the machine's memory.")
      ->type_name("SIZE")
      ->group(kGeneralGroup);
  command
      .add_option("--effect", work.effect,
                  fmt::format("The effect library. Default: $VARILUM_EFFECT, else {} beside this "
                              "program.",
                              kEffectLibrary))
      ->type_name("PATH")
      ->group(kGeneralGroup);
  command
      .add_option("--progress", console.progress,
                  "'bar' on standard error, 'json', one object a line on standard output, or "
                  "'none'. Default: bar on a terminal.")
      ->check(CLI::IsMember({"bar", "json", "none"}))
      ->type_name("STYLE")
      ->group(kGeneralGroup);
  command.add_flag("-q,--quiet", console.quiet, "Say nothing but errors.")->group(kGeneralGroup);
}

void addHostRoleOption(CLI::App& command, WorkOptions& work) {
  command
      .add_option_function<std::string>(
          "--host-role",
          [&work](const std::string& text) {
            if (text == "after-effects") {
              work.role = host::Role::afterEffects;
            } else if (text == "premiere") {
              work.role = host::Role::premiere;
            } else {
              throw CLI::ValidationError(
                  "--host-role", fmt::format("'{}' is none of: after-effects, premiere.", text));
            }
          },
          "The application that the effect is to find itself in: 'after-effects', or 'premiere', "
          "which renders with 8 bits. Default: after-effects.")
      ->type_name("ROLE")
      ->group(kGeneralGroup);
}

void requireDepthOf(host::Role role, const OutputOptions& options) {
  if (role != host::Role::premiere ||
      options.depth.value_or(host::Depth::bits8) == host::Depth::bits8)
    return;
  throw UsageError(fmt::format(
      "--depth {} does not go with --host-role premiere, which renders with 8 bits; leave one out.",
      static_cast<int>(*options.depth)));
}

host::Depth renderDepth(const OutputOptions& options, const media::ClipInfo& clip,
                        host::Role role) {
  if (role == host::Role::premiere) return host::Depth::bits8;
  if (options.depth) return *options.depth;
  switch (clip.workingDepth) {
    case media::Depth::eight:
      return host::Depth::bits8;
    case media::Depth::sixteen:
      return host::Depth::bits16;
    case media::Depth::floating:
      return host::Depth::float32;
  }
  return host::Depth::bits8;
}

}  // namespace cli
