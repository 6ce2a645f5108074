// tests/cli/program.h — running programs as a user does, with what they said and how they ended.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace cli::test {

struct Outcome {
  int code = -1;    ///< exit code; 1000 + signal when killed
  std::string out;  ///< standard output
  std::string err;  ///< standard error
};

/// Called with what the program has printed on standard output so far; the signal it returns, if
/// not 0, is sent once.
using Watcher = std::function<int(const std::string& out)>;

/// Runs argv[0] (looked up in PATH) to its end. Kills it after two minutes.
Outcome run(const std::vector<std::string>& argv, const Watcher& watch = {});

/// Runs the varilum4 program under test.
Outcome varilum(std::vector<std::string> arguments, const Watcher& watch = {});

/// Runs ffmpeg quietly, overwriting; throws when it fails. Gives its standard output.
std::string ffmpeg(std::vector<std::string> arguments);

}  // namespace cli::test
