// cli/workbench.h — a clip on the table: the effect loaded and applied to it, ready to be analysed.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>

#include "cli/clip_source.h"
#include "cli/console.h"
#include "cli/effect_options.h"
#include "cli/levels.h"
#include "host/effect.h"
#include "host/effect_module.h"
#include "host/host.h"
#include "host/instance.h"

namespace cli {

/// How the work is done, not what comes out.
struct WorkOptions {
  std::string effect;                   ///< path of the effect library; empty: found
  int threads = 0;                      ///< frames rendered at once; 0: one a core
  std::optional<std::uint64_t> memory;  ///< bytes of decoded pictures to keep; unset: a quarter
  host::Role role = host::Role::afterEffects;  ///< the application that the effect finds itself in
};

int workerCount(const WorkOptions& options);

/// Bytes of decoded pictures to keep: as asked, or a quarter of the machine's memory.
std::uint64_t pictureMemory(const WorkOptions& options);

/// One clip, one instance of the effect on it.
class Workbench {
 public:
  /// Opens the clip and applies the effect. Throws media::Error, Failure, host::Error.
  Workbench(const ClipOptions& clip, const WorkOptions& work, Console& console);
  ~Workbench();
  Workbench(const Workbench&) = delete;
  Workbench& operator=(const Workbench&) = delete;

  ClipSource& source() noexcept { return source_; }
  host::Host& host() noexcept { return host_; }
  host::Effect& effect() noexcept { return *effect_; }
  host::Instance& instance() noexcept { return *instance_; }

  /// Replaces the instance by a saved one, over the first `frames` frames.
  void open(const host::SavedInstance& saved, std::int32_t frames);

  /// Applies the options and presses "Analyze", with progress. When the clip turns out to break off
  /// it is analysed again up to there, and console is told. Throws Interrupted; Failure when the
  /// effect does not take all frames for analysed.
  void analyze(const EffectOptions& options);

  /// Applies the options to an opened project, analysing anew when they ask for it.
  void adjust(const EffectOptions& options);

  /// What the effect holds of each frame now.
  Levels levels();

 private:
  class Announcer;
  media::ClipInfo layerClip() const;
  void fresh();
  void pressAnalyze();

  Console& console_;
  ClipSource source_;
  std::unique_ptr<Announcer> announcer_;
  host::EffectModule module_;
  host::Host host_;
  std::unique_ptr<host::Effect> effect_;
  std::unique_ptr<host::Instance> instance_;
};

}  // namespace cli
