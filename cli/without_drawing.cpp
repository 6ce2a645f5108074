// cli/without_drawing.cpp — in place of what draws pictures, where the libraries for it are
// missing.
#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include "cli/demo_command.h"
#include "cli/error.h"
#include "cli/panel_picture.h"
#include "cli/plot/plot_file.h"

namespace cli {
namespace {

[[noreturn]] void refuse(const char* what) {
  throw Failure(std::string(what) + " drawn by this program for Linux only.");
}

}  // namespace

void requirePlotWritable(const std::string& path, bool /*force*/) {
  if (!path.empty()) refuse("Plots are");
}

void writePlot(const std::string& path, const media::ClipInfo& /*clip*/, const Levels& /*levels*/,
               std::span<const ShotFindings> /*shots*/, std::span<const FrameResult> /*rendered*/) {
  requirePlotWritable(path, false);
}

void savePanel(const host::Panel& /*panel*/, const std::filesystem::path& /*path*/,
               double /*scale*/, bool /*force*/) {
  refuse("Pictures of the panel are");
}

void addDemoOptions(CLI::App& command, DemoOptions& /*options*/) {
  command.description("The demo, which is made by this program for Linux only.");
  command.allow_extras();
}

void runDemo(const DemoOptions& /*options*/) {
  refuse("The demo's clips and plots are");
}

}  // namespace cli
