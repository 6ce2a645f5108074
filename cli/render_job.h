// cli/render_job.h — an analysed clip written through the effect, with what was gained.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/frame_span.h"
#include "cli/output_options.h"
#include "cli/workbench.h"
#include "media/clip_writer.h"

namespace cli {

/// Brightness of each frame written, and how long it took.
struct RenderReport {
  std::int64_t first = 0;      ///< frame
  std::vector<double> input;   ///< levels on the way in, one a frame from `first` on
  std::vector<double> output;  ///< and out
  std::int64_t untouched = 0;  ///< frames written as they were
  double seconds = 0.0;        ///< rendering and encoding
};

/// Opens the output; throws media::Error, before anything is analysed, when it cannot be.
/// Its notes on what will differ from the input go to the console.
media::ClipWriter openOutput(const std::string& path, Workbench& bench,
                             const OutputOptions& options,
                             const std::optional<media::FrameRange>& frames, Console& console);

/// Renders frames first..last into the writer and finishes it. Says on the console when "Adjust for
/// clipping" cannot act, and when the output flickers more than the input.
RenderReport renderTo(media::ClipWriter& writer, Workbench& bench, const OutputOptions& options,
                      int workers, media::FrameRange frames, Console& console);

/// The summary: a line for people, or a JSON object when progress is JSON.
void reportRendering(const RenderReport& report, const std::string& output, double totalSeconds,
                     Console& console);

}  // namespace cli
