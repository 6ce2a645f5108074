// cli/shots/shot_options.cpp — how a clip is taken apart before the effect sees it, as options.
#include "cli/shots/shot_options.h"

#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include "cli/error.h"
#include "cli/options/frame_span.h"
#include "cli/options/list_file.h"

namespace cli {
namespace {

// An option with two answers; `second` tells whether it was the second one.
void addEither(CLI::App& command, const std::string& name, const std::string& first,
               const std::string& second, bool& isSecond, const std::string& help) {
  command
      .add_option_function<std::string>(
          name,
          [=, &isSecond](const std::string& text) {
            if (text != first && text != second) {
              throw CLI::ValidationError(
                  name, fmt::format("'{}' is none of: {}, {}.", text, first, second));
            }
            isSecond = text == second;
          },
          help)
      ->type_name(first + "|" + second)
      ->group(kShotGroup);
}

}  // namespace

void addShotOptions(CLI::App& command, ShotOptions& options) {
  command
      .add_option_function<std::string>(
          "--shots",
          [&options](const std::string& text) {
            using Shots = ShotOptions::Shots;
            options.shots = text == "auto"  ? Shots::find
                            : text == "off" ? Shots::off
                                            : Shots::listed;
            options.list = options.shots == Shots::listed ? text : "";
          },
          "Where hard cuts are: 'auto' finds them, 'off' takes the clip for one shot, a file lists "
          "the first frame of each new shot, one number a line. No frame is matched with frames "
          "of another shot. Default: auto.")
      ->type_name("auto|off|FILE")
      ->group(kShotGroup);
  addEither(command, "--duplicates", "auto", "keep", options.keepDuplicates,
            "Frames that repeat the one before (pull-down, held frames): 'auto' measures each "
            "picture once and gives its repeats the same correction; 'keep' counts every frame, as "
            "it is when levels are given frame by frame. Default: auto.");
  addEither(command, "--flashes", "correct", "leave", options.leaveFlashes,
            "Frames far off those around them: 'correct' brings jumps of exposure to the level of "
            "the others and leaves light of the scene, such as lightning; 'leave' leaves them "
            "all. Black frames are always left. Default: correct.");
}

std::vector<std::int64_t> readShotList(const std::string& path, std::int64_t frameCount) {
  std::vector<std::int64_t> cuts;
  for (const ListLine& line : readListFile(path, "--shots")) {
    const auto frame = line.fields.size() == 1 ? parseFrame(line.fields.front()) : std::nullopt;
    if (!frame) {
      throw UsageError(
          fmt::format("--shots: line {} of {} is no frame number.", line.number, path));
    }
    if (*frame >= frameCount) {
      throw UsageError(
          fmt::format("--shots: frame {} in line {} of {} is beyond the clip, whose frames are "
                      "0..{}.",
                      *frame, line.number, path, frameCount - 1));
    }
    if (!cuts.empty() && *frame <= cuts.back()) {
      throw UsageError(fmt::format("--shots: frame {} in line {} of {} does not come after {}.",
                                   *frame, line.number, path, cuts.back()));
    }
    cuts.push_back(*frame);
  }
  return cuts;
}

}  // namespace cli
