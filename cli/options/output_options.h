// cli/options/output_options.h — how a rendered clip is written, as options of the command line.
#pragma once

#include <optional>
#include <string>

#include "cli/job/clip_source.h"
#include "cli/workbench.h"
#include "host/image.h"
#include "media/clip_info.h"
#include "media/clip_writer.h"

namespace CLI {
class App;
}

namespace cli {

struct OutputOptions {
  media::WriteOptions write;
  std::optional<host::Depth> depth;  ///< of the rendering; unset: what the footage has
  bool force = false;                ///< replace files that are there already
};

/// "Encoding": --codec, --quality, --preset, --pixel-format, --encoder-option, --no-audio,
/// --depth.
void addOutputOptions(CLI::App& command, OutputOptions& options);

/// "Reading": --fps, --start-number of image sequences.
void addReadOptions(CLI::App& command, media::ReadOptions& options);

/// "General": --force (where there is an output), --threads, --memory, --effect, --progress,
/// --quiet.
void addForceOption(CLI::App& command, bool& force);
void addGeneralOptions(CLI::App& command, WorkOptions& work, ConsoleOptions& console);

/// "General": --host-role.
void addHostRoleOption(CLI::App& command, WorkOptions& work);

/// Throws UsageError when the host has no such depth.
void requireDepthOf(host::Role role, const OutputOptions& options);

/// The depth to render at: as asked, or the clip's own as far as the host has it.
host::Depth renderDepth(const OutputOptions& options, const media::ClipInfo& clip, host::Role role);

}  // namespace cli
