// cli/reporting/report_file.h — the reports that --report asks for.
#pragma once

#include <string>

#include "cli/job/job_result.h"
#include "cli/reporting/report_options.h"
#include "cli/reporting/report_stills.h"
#include "cli/workbench.h"

namespace cli {

/// Writes what was asked for. `output`: path of the clip written, or "null:"; `force`: replace what
/// is there. Throws Failure or media::Error.
void writeReports(const ReportOptions& options, const JobResult& job, Workbench& bench,
                  const ReportStills& stills, const std::string& output, double totalSeconds,
                  bool force);

}  // namespace cli
