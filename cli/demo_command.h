// cli/demo_command.h — varilum4 demo: makes a flickering clip, steadies it, tells what was gained.
#pragma once

#include <string>

#include "cli/terminal/console.h"
#include "cli/workbench.h"

namespace CLI {
class App;
}

namespace cli {

struct DemoOptions {
  std::string folder = "varilum4-demo";
  bool force = false;
  WorkOptions work;
  ConsoleOptions console;
};

/// Adds the command's options and help.
void addDemoOptions(CLI::App& command, DemoOptions& options);

/// Writes into the folder (made if missing) flicker.mp4, steady.mp4, before_after.png and
/// levels.csv, and prints the figures, all measured on the two files as decoded. The effect works
/// with its default settings. Throws Failure, also when the per-frame random flicker fell less than
/// ten-fold; media::Error; host::Error; Interrupted.
void runDemo(const DemoOptions& options);

}  // namespace cli
