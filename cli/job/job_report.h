// cli/job/job_report.h — what came of a job, told to whoever started it.
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "cli/job/job_result.h"
#include "cli/terminal/console.h"

namespace cli {

/// Says what was found besides a plain clip of one shot: cuts, repeats, outliers with what becomes
/// of them and why, bars.
void reportFindings(std::span<const ShotFindings> shots, Console& console);

/// Says that a shot is passed through, or why it is not although it comes out worse.
void warnOfWorseShot(const JobResult& job, std::size_t shot, const FlickerFigures& before,
                     const FlickerFigures& after, Console& console);

/// The summary: a line a shot and one for all, or a JSON object when progress is JSON.
void reportRendering(const JobResult& job, const std::string& output, double totalSeconds,
                     Console& console);

}  // namespace cli
