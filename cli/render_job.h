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

/// The clip being written. Opened before anything is analysed, so that what cannot be written is
/// known at once.
class Output {
 public:
  /// Throws media::Error or Failure. Notes on what will differ from the input go to the console.
  Output(std::string path, Workbench& bench, const OutputOptions& options,
         const std::optional<media::FrameRange>& frames, Console& console);

  media::ClipWriter& writer() noexcept { return *writer_; }

  /// Drops what was written and begins again.
  void restart();

 private:
  std::string path_;
  Workbench& bench_;
  media::WriteOptions options_;
  std::optional<media::ClipWriter> writer_;
};

/// Renders frames first..last into the output and finishes it. Says on the console when "Adjust for
/// clipping" cannot act. A clip that smoothing would make flicker more is written as it is, and
/// that is said; targets that the user set frame by frame are followed whatever comes of it.
RenderReport renderTo(Output& output, Workbench& bench, const OutputOptions& options, int workers,
                      media::FrameRange frames, Console& console);

/// The summary: a line for people, or a JSON object when progress is JSON.
void reportRendering(const RenderReport& report, const std::string& output, double totalSeconds,
                     Console& console);

}  // namespace cli
