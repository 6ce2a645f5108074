// cli/reporting/report_stills.h — pictures for a report, taken on their way to the encoder.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "cli/job/render_pipeline.h"
#include "cli/reporting/report_options.h"
#include "cli/shots/levels.h"
#include "cli/workbench.h"
#include "media/clip_writer.h"
#include "report/report.h"

namespace cli {

/// Small pictures of frames all over the clip, and larger ones of those that people compare: the
/// frames asked for, or those that are corrected most, some way apart. None without a page.
class ReportStills {
 public:
  /// For an analysed clip of which `frames` are to be rendered.
  ReportStills(const ReportOptions& options, Workbench& bench, media::FrameRange frames);

  /// Frames may come again; the last picture counts. Throws media::Error.
  void take(const RenderedFrame& frame);

  std::vector<report::Thumbnail> thumbnails() const;
  std::vector<report::Comparison> comparisons() const;

 private:
  void chooseMostCorrected(const Levels& levels, media::FrameRange frames);

  int rotation_;
  std::map<std::int64_t, report::Thumbnail> thumbnails_;
  std::map<std::int64_t, report::Comparison> comparisons_;
};

}  // namespace cli
