// cli/terminal/console.h — what is said to the user besides the results: notes, warnings, the
// summary.
#pragma once

#include <string>

#include "cli/terminal/progress.h"

namespace cli {

/// How much is said, as --quiet and --progress have it.
struct ConsoleOptions {
  bool quiet = false;
  std::string progress;  ///< "bar", "json", "none" or empty: a bar when on a terminal
};

/// One thread.
class Console {
 public:
  explicit Console(const ConsoleOptions& options);

  Progress& progress() noexcept { return progress_; }
  bool json() const noexcept { return progress_.style() == ProgressStyle::json; }

  /// "varilum4: warning: ..." on standard error; nothing when quiet.
  void warn(const std::string& text);
  /// A plain line on standard error; nothing when quiet.
  void note(const std::string& text);
  /// The result, one line on standard output; nothing when quiet.
  void result(const std::string& line);

 private:
  bool quiet_;
  Progress progress_;
};

/// The text with line ends turned into blanks, none at its end.
std::string oneLine(const std::string& text);

}  // namespace cli
