// cli/main.cpp — the varilum4 program: commands, and where every failure becomes an exit code.
#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <cstdio>
#include <exception>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/demo_command.h"
#include "cli/error.h"
#include "cli/help_formatter.h"
#include "cli/terminal/console.h"
#include "cli/terminal/interrupt.h"
#include "cli/terminal/invocation.h"
#include "host/error.h"
#include "media/error.h"

namespace {

enum ExitCode { kDone = 0, kFailed = 1, kUsage = 2, kInterrupted = 130 };

constexpr const char* kAbout = "Removes brightness flicker from footage.";
constexpr const char* kExamples =
    "\nExamples:\n"
    "  varilum4 deflicker shot.mp4 steady.mp4\n"
    "  varilum4 deflicker shot.%05d.dpx steady.%05d.dpx --correction-method gamma\n"
    "  varilum4 analyze shot.mov -o shot.varilum\n"
    "  varilum4 render shot.varilum steady.mov --smoothing-frames 12 --frames 100..200\n"
    "\nFrames are counted from 0, and ranges of frames include both ends.\n"
    "Exit codes: 0 done, 1 failed, 2 wrong usage, 130 interrupted.";

int complain(const std::exception& error, int code) {
  std::fprintf(stderr, "varilum4: %s\n", cli::oneLine(error.what()).c_str());
  return code;
}

int usageError(const CLI::App& app, const CLI::ParseError& error) {
  std::string name = "varilum4";
  for (const CLI::App* command : app.get_subcommands()) name += " " + command->get_name();
  std::string what = cli::oneLine(error.what());
  if (!what.empty() && what.back() != '.') what += '.';
  std::fprintf(stderr, "varilum4: %s See '%s --help'.\n", what.c_str(), name.c_str());
  return kUsage;
}

int run(int argc, char** argv) {
  CLI::App app(kAbout, "varilum4");
  app.formatter(std::make_shared<cli::HelpFormatter>());
  app.footer(kExamples);
  app.set_version_flag("--version", std::string("varilum4 ") + cli::programVersion());
  app.require_subcommand(1);
  app.allow_windows_style_options(false);  // "/clips/shot.y4m" is a name there, too

  cli::Work work;
  cli::addDeflickerCommand(app, work);
  cli::addAnalyzeCommand(app, work);
  cli::addRenderCommand(app, work);
  cli::addInfoCommand(app, work);
  cli::addPanelCommand(app, work);
  cli::addSessionCommand(app, work);
  cli::addValidateCommand(app, work);
  cli::DemoOptions demo;
  CLI::App* demoCommand =
      app.add_subcommand("demo", "Make a flickering clip, steady it, and say how much was gained.");
  cli::addDemoOptions(*demoCommand, demo);
  demoCommand->callback([&] { work = [&] { cli::runDemo(demo); }; });

  const std::vector<std::string> words = cli::programWords(argc, argv);
  try {
    app.parse(std::vector<std::string>(words.rbegin(), words.rend()));  // last first
  } catch (const CLI::Success& wanted) {                                // --help, --version
    return app.exit(wanted);
  } catch (const CLI::ParseError& error) {
    return usageError(app, error);
  }
  cli::catchInterrupts();
  work();
  return kDone;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const cli::UsageError& error) {
    return complain(error, kUsage);
  } catch (const cli::Interrupted& error) {
    return complain(error, kInterrupted);
  } catch (const host::Cancelled& error) {
    return complain(error, kInterrupted);
  } catch (const media::Error& error) {
    return complain(error, error.problem() == media::Problem::badOption ? kUsage : kFailed);
  } catch (const std::bad_alloc&) {
    return complain(std::runtime_error("There is not enough memory; try fewer --threads."),
                    kFailed);
  } catch (const std::exception& error) {
    return complain(error, kFailed);
  }
}
