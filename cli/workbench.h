// cli/workbench.h — a clip on the table: the effect loaded and applied to it, ready to be analysed.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/job/clip_source.h"
#include "cli/options/effect_options.h"
#include "cli/options/effect_parameters.h"
#include "cli/project/project_file.h"
#include "cli/shots/levels.h"
#include "cli/shots/shot.h"
#include "cli/shots/shot_options.h"
#include "cli/terminal/console.h"
#include "host/effect.h"
#include "host/effect_module.h"
#include "host/host.h"

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

/// One clip, taken apart into shots with an instance of the effect each.
class Workbench {
 public:
  /// Opens the clip and applies the effect to all of it. Throws media::Error, Failure, host::Error.
  Workbench(const ClipOptions& clip, const WorkOptions& work, Console& console);
  ~Workbench();
  Workbench(const Workbench&) = delete;
  Workbench& operator=(const Workbench&) = delete;

  ClipSource& source() noexcept { return source_; }
  host::Host& host() noexcept { return host_; }
  host::Effect& effect() noexcept { return *effect_; }

  /// In order, and every frame of the clip in one of them. A single one at first; open() and
  /// analyze() replace them.
  std::size_t shotCount() const noexcept { return shots_.size(); }
  Shot& shot(std::size_t index) noexcept { return *shots_[index]; }
  /// The shot that holds a frame; for frames outside the clip the nearest one.
  std::size_t shotAt(std::int64_t frame) const noexcept;

  /// What is known of each shot.
  std::vector<ShotFindings> found() const;

  /// What the levels were asked to follow.
  const Target& target() const noexcept { return target_; }

  /// Puts a project's shots on the table. Throws Failure when its parts do not fit together.
  void open(const Project& project);

  /// Looks at every frame once, finds the shots, applies the options to each and presses "Analyze",
  /// with progress. A clip without cuts, repeats and frames to be left is gone through once, any
  /// other a second time. When the clip turns out to break off it is done up to there, and the
  /// console is told. Throws Interrupted; UsageError when the options do not fit the clip; Failure
  /// when the effect does not take all frames for analysed.
  void analyze(const EffectOptions& options, const ShotOptions& shots);

  /// Applies the options to an opened project, analysing anew what they ask for.
  void adjust(const EffectOptions& options);

  /// What the effect holds of each frame of the clip now; repeats have their original's.
  Levels levels();

 private:
  class Announcer;
  media::ClipInfo clipOf(const ShotFrames& frames) const;
  void takeAsOneShot();
  void apply(const EffectOptions& options, Shot& shot);
  void pressAnalyze(const std::vector<Shot*>& shots, const char* phase);
  std::vector<FoundShot> survey(const EffectOptions& options, const ShotOptions& shots);
  std::vector<FoundShot> analyzeWhole(const EffectOptions& options, const ShotOptions& shots,
                                      const std::vector<std::int64_t>& cuts);
  void measureLumas();
  void follow(const Target& target, bool spreadGiven);

  Console& console_;
  ClipSource source_;
  std::unique_ptr<Announcer> announcer_;
  host::EffectModule module_;
  host::Host host_;
  std::unique_ptr<host::Effect> effect_;
  std::vector<std::unique_ptr<Shot>> shots_;
  Target target_;
};

}  // namespace cli
