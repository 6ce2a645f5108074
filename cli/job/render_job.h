// cli/job/render_job.h — an analysed clip written through the effect, with what was gained.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "cli/job/job_result.h"
#include "cli/job/render_pipeline.h"
#include "cli/options/output_options.h"
#include "cli/workbench.h"
#include "media/clip_writer.h"

namespace cli {

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
/// clipping" cannot act. A shot that would flicker more than it did is written as it is, and that
/// is said: where it can be told beforehand nothing is rendered twice; else, as with an opened
/// project, all is written again without it. Targets that the user set frame by frame are followed
/// whatever comes of it. `observe`, if there, sees each frame on its way to the encoder, and again
/// when all is written again.
JobResult renderTo(Output& output, Workbench& bench, const OutputOptions& options, int workers,
                   media::FrameRange frames, Console& console,
                   const std::function<void(const RenderedFrame&)>& observe = {});

}  // namespace cli
