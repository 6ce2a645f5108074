// tests/cli/program.h — running programs as a user does, with what they said and how they ended.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace cli::test {

/// Whether the program was built without FFmpeg and without what draws, as for Windows.
#ifdef VARILUM_PLAIN_FOOTAGE
inline constexpr bool kPlainProgram = true;
#else
inline constexpr bool kPlainProgram = false;
#endif

struct Outcome {
  int code = -1;    ///< exit code; 1000 + signal when killed, on POSIX systems
  std::string out;  ///< standard output
  std::string err;  ///< standard error
};

/// Called with what the program has printed on standard output so far; the signal it returns, if
/// not 0, is sent once. On Windows, which has none, whatever it is presses Ctrl-C.
using Watcher = std::function<int(const std::string& out)>;

/// Runs argv[0] (looked up in PATH) to its end. Kills it after two minutes. The words are UTF-8.
Outcome run(const std::vector<std::string>& argv, const Watcher& watch = {});

/// Runs the varilum4 program under test.
Outcome varilum(std::vector<std::string> arguments, const Watcher& watch = {});

/// Runs ffmpeg quietly, overwriting; throws when it fails, or there is none. Gives its standard
/// output.
std::string ffmpeg(std::vector<std::string> arguments);

}  // namespace cli::test
