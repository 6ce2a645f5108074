// cli/terminal/console.cpp — what is said to the user besides the results.
#include "cli/terminal/console.h"

#include <cstdio>

#include "cli/terminal/terminal.h"

namespace cli {
namespace {

ProgressStyle styleFor(const ConsoleOptions& options) {
  if (options.progress == "json") return ProgressStyle::json;
  if (options.quiet || options.progress == "none") return ProgressStyle::none;
  if (options.progress == "bar") return ProgressStyle::bar;
  return isTerminal() ? ProgressStyle::bar : ProgressStyle::none;
}

}  // namespace

std::string oneLine(const std::string& text) {
  std::string line;
  for (const char c : text) line += c == '\n' || c == '\r' ? ' ' : c;
  while (!line.empty() && line.back() == ' ') line.pop_back();
  return line;
}

Console::Console(const ConsoleOptions& options)
    : quiet_(options.quiet), progress_(styleFor(options)) {}

void Console::warn(const std::string& text) {
  if (quiet_) return;
  progress_.clear();
  std::fprintf(stderr, "varilum4: warning: %s\n", oneLine(text).c_str());
}

void Console::note(const std::string& text) {
  if (quiet_) return;
  progress_.clear();
  std::fprintf(stderr, "%s\n", oneLine(text).c_str());
}

void Console::result(const std::string& line) {
  if (quiet_) return;
  progress_.clear();
  std::puts(line.c_str());
  std::fflush(stdout);
}

}  // namespace cli
