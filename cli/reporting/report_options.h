// cli/reporting/report_options.h — which reports to write, as options.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace cli {

struct ReportOptions {
  std::string page;                  ///< path of the page; empty: none
  std::string json;                  ///< path of the data; empty: none
  std::vector<std::int64_t> frames;  ///< to be compared by eye; none: those that change most
};

/// "General": --report, once for .html and once for .json, and --report-frames.
void addReportOptions(CLI::App& command, ReportOptions& options);

/// Throws Failure when a file may not be written, and UsageError when a frame is not in the clip.
/// To be asked before long work starts.
void checkReports(const ReportOptions& options, std::int64_t frameCount, bool force);

}  // namespace cli
