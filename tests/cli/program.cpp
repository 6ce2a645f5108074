// tests/cli/program.cpp — running the programs under test and beside them.
#include "tests/cli/program.h"

#include <stdexcept>

namespace cli::test {

Outcome varilum(std::vector<std::string> arguments, const Watcher& watch) {
  arguments.insert(arguments.begin(), VARILUM_PROGRAM);
  return run(arguments, watch);
}

std::string ffmpeg(std::vector<std::string> arguments) {
  if (kPlainProgram) throw std::logic_error("this takes ffmpeg, which is not there");
  arguments.insert(arguments.begin(), {FFMPEG_PROGRAM, "-v", "error", "-nostdin", "-y"});
  Outcome outcome = run(arguments);
  if (outcome.code != 0) throw std::runtime_error("ffmpeg: " + outcome.err);
  return std::move(outcome.out);
}

}  // namespace cli::test
