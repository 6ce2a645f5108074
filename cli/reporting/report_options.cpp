// cli/reporting/report_options.cpp — which reports to write, as options.
#include "cli/reporting/report_options.h"

#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <filesystem>

#include "cli/error.h"
#include "cli/options/frame_span.h"
#include "cli/output_file.h"

namespace cli {
namespace {

constexpr const char* kGroup = "General";

void takeReport(ReportOptions& options, const std::string& text) {
  const std::string extension = std::filesystem::path(text).extension().string();
  const bool page = extension == ".html" || extension == ".htm";
  if (!page && extension != ".json") {
    throw CLI::ValidationError("--report",
                               fmt::format("'{}' ends neither in .html nor in .json.", text));
  }
  std::string& path = page ? options.page : options.json;
  if (!path.empty()) {
    throw CLI::ValidationError("--report",
                               fmt::format("{} and {} are reports of one kind.", path, text));
  }
  path = text;
}

}  // namespace

void addReportOptions(CLI::App& command, ReportOptions& options) {
  command
      .add_option_function<std::vector<std::string>>(
          "--report",
          [&options](const std::vector<std::string>& texts) {
            for (const std::string& text : texts) takeReport(options, text);
          },
          "Write what was measured: .html is a page with curves, shots and frames before and "
          "after, .json is for programs. May be given once for each.")
      ->type_name("FILE")
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->group(kGroup);
  command
      .add_option_function<std::vector<std::string>>(
          "--report-frames",
          [&options](const std::vector<std::string>& texts) {
            for (const std::string& text : texts) {
              const auto frame = parseFrame(text);
              if (!frame) {
                throw CLI::ValidationError("--report-frames",
                                           fmt::format("'{}' is no frame number.", text));
              }
              options.frames.push_back(*frame);
            }
          },
          "Frames that the page shows before and after, such as 0,77,150. Default: those that "
          "change most.")
      ->type_name("FRAME,...")
      ->delimiter(',')
      ->group(kGroup);
}

void checkReports(const ReportOptions& options, std::int64_t frameCount, bool force) {
  for (const std::string& path : {options.page, options.json}) {
    if (!path.empty()) requireWritable(path, force);
  }
  for (const std::int64_t frame : options.frames) {
    if (frame >= frameCount) {
      throw UsageError(fmt::format("--report-frames: the clip has no frame {}; its last is {}.",
                                   frame, frameCount - 1));
    }
  }
}

}  // namespace cli
