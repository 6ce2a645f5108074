// cli/reporting/report_file.cpp — the reports that --report asks for.
#include "cli/reporting/report_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <span>
#include <utility>

#include "cli/commands.h"
#include "cli/output_file.h"
#include "cli/project/project_text.h"
#include "report/report.h"

namespace cli {
namespace {

std::string nameOf(const std::string& path) {
  return std::filesystem::path(path).filename().string();
}

report::Figures figuresFor(const FlickerFigures& before, const FlickerFigures& after) {
  return {before.flicker, after.flicker, before.jerk, after.jerk};
}

report::Shot shotFor(const ShotResult& result) {
  report::Shot shot;
  shot.first = result.found.frames.first();
  shot.last = result.found.frames.last();
  shot.figures = figuresFor(result.before, result.after);
  shot.passedThrough = result.passedThrough;
  if (const auto& matte = result.found.matte) {
    shot.matte = std::array{matte->left, matte->top, matte->right, matte->bottom};
  }
  for (const ShotOutlier& outlier : result.found.outliers) {
    shot.outliers.push_back(
        {outlier.found.first, outlier.found.last, std::string(footage::name(outlier.found.kind)),
         std::string(footage::reason(outlier.found.kind)), outlier.found.ratio, outlier.left});
  }
  return shot;
}

std::string depthText(host::Depth depth) {
  return depth == host::Depth::float32 ? "32-bit float"
                                       : fmt::format("{} bits", static_cast<int>(depth));
}

std::vector<report::Row> settingsOf(const JobResult& job) {
  const EffectSettings& settings = job.shots.front().settings;
  std::vector<report::Row> rows{
      {"target", job.target},
      {"smoothing frames", std::to_string(settings.smoothingFrames)},
      {"correction method", std::string(correctionName(settings.correctionMethod))},
      {"rendered with", depthText(job.depth)}};
  if (settings.adjustClipping) rows.emplace_back("adjust clipping", "on");
  if (settings.favorBrighter) rows.emplace_back("favor brighter", "on");
  if (settings.useSubrect) {
    rows.emplace_back("measured in", fmt::format("{}", fmt::join(settings.rect, ", ")));
  }
  return rows;
}

report::Report reportOf(const JobResult& job, Workbench& bench, const std::string& output,
                        double totalSeconds) {
  const media::ClipInfo& clip = bench.source().clip();
  report::Report report;
  report.input = nameOf(clip.path);
  if (output != "null:") report.output = nameOf(output);
  report.width = clip.width;
  report.height = clip.height;
  report.frameRate = clip.frameRate.value();
  report.clipFrames = job.shots.back().found.frames.last() + 1;
  report.seconds = totalSeconds;
  report.first = job.first;
  for (const FrameResult& frame : job.frames) {
    report.frames.push_back(
        {frame.input, frame.target, frame.output, frame.original, frame.untouched});
  }
  report.figures = figuresFor(figuresBefore(job), figuresAfter(job));
  for (const ShotResult& shot : job.shots) report.shots.push_back(shotFor(shot));
  report.settings = settingsOf(job);
  report.versions = {{"varilum4", programVersion()},
                     {"effect", versionText(bench.effect().version())}};
  return report;
}

void writeText(const std::string& path, const std::string& text, bool force) {
  OutputFile file(path, force);
  file.write(std::as_bytes(std::span(text)));
  file.commit();
}

}  // namespace

void writeReports(const ReportOptions& options, const JobResult& job, Workbench& bench,
                  const ReportStills& stills, const std::string& output, double totalSeconds,
                  bool force) {
  report::Report report = reportOf(job, bench, output, totalSeconds);
  if (!options.json.empty()) writeText(options.json, report::jsonReport(report), force);
  if (options.page.empty()) return;
  report.thumbnails = stills.thumbnails();
  report.comparisons = stills.comparisons();
  writeText(options.page, report::pageReport(report), force);
}

}  // namespace cli
