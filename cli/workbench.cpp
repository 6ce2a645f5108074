// cli/workbench.cpp — a clip on the table: the effect loaded and applied to it.
#include "cli/workbench.h"

#include <fmt/format.h>

#include <algorithm>
#include <thread>

#include "cli/effect_location.h"
#include "cli/error.h"
#include "cli/interrupt.h"
#include "cli/memory_size.h"
#include "host/error.h"
#include "host/listener.h"

namespace cli {
namespace {

host::HostOptions hostOptions() {
  host::HostOptions options;
  options.threads = 1;  // whole frames are rendered side by side instead
  return options;
}

host::ApiVersion apiVersion(host::Role role) {
  // Premiere Pro stopped at an early version of the interface.
  return role == host::Role::premiere ? host::ApiVersion{13, 4} : host::ApiVersion{};
}

}  // namespace

// Passes on what the effect says. Its count of analysed frames runs one ahead of the truth; from a
// dialog of its own it comes in percent.
class Workbench::Announcer final : public host::Listener {
 public:
  Announcer(Console& console, host::Role role)
      : console_(console), percent_(role == host::Role::premiere) {}

  std::int64_t frames = 0;  // to be analysed

  void message(host::MessageKind kind, std::string_view, std::string_view text) override {
    if (kind == host::MessageKind::box) return console_.note(std::string(text));
    if (kind != host::MessageKind::info) console_.warn(std::string(text));
  }
  bool progress(std::int32_t done, std::int32_t total) override {
    const std::int64_t all = frames;
    console_.progress().update(percent_ ? (done * all + total / 2) / total
                                        : std::min<std::int64_t>(done - 1, total));
    return !interrupted();
  }
  void infoText(std::string_view, std::string_view) override {}

 private:
  Console& console_;
  const bool percent_;
};

int workerCount(const WorkOptions& options) {
  if (options.threads > 0) return options.threads;
  return std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
}

std::uint64_t pictureMemory(const WorkOptions& options) {
  return options.memory.value_or(machineMemory() / 4);
}

Workbench::Workbench(const ClipOptions& clip, const WorkOptions& work, Console& console)
    : console_(console),
      source_(clip, workerCount(work), pictureMemory(work)),
      announcer_(std::make_unique<Announcer>(console, work.role)),
      module_(findEffect(work.effect)),
      host_(work.role, apiVersion(work.role), hostOptions()) {
  host_.setListener(announcer_.get());
  effect_ = std::make_unique<host::Effect>(host_, module_);
  fresh();
}

Workbench::~Workbench() {
  instance_.reset();
  effect_.reset();
  host_.setListener(nullptr);
}

void Workbench::fresh() {
  instance_.reset();
  instance_ = std::make_unique<host::Instance>(*effect_, source_);
}

void Workbench::open(const host::SavedInstance& saved, std::int32_t frames) {
  instance_.reset();
  source_.setFrameCount(frames);
  instance_ = std::make_unique<host::Instance>(host::Instance::open(*effect_, source_, saved));
}

void Workbench::pressAnalyze() {
  announcer_->frames = source_.info().frameCount;
  console_.progress().begin("Analyzing", announcer_->frames);
  try {
    instance_->press("Analyze");
  } catch (const host::Cancelled&) {
    throw Interrupted();
  }
  source_.endReading();
  console_.progress().update(source_.info().frameCount);
  console_.progress().end();
  if (!levels().complete) {
    throw Failure("The effect could not analyse every frame of the clip.");
  }
}

media::ClipInfo Workbench::layerClip() const {
  media::ClipInfo clip = source_.clip();
  clip.frameCount = source_.info().frameCount;
  return clip;
}

void Workbench::analyze(const EffectOptions& options) {
  checkAgainstClip(options, layerClip());
  applyEffectOptions(options, layerClip(), *instance_);
  warnOfIdleOptions(options, readSettings(*instance_), console_);
  try {
    pressAnalyze();
    return;
  } catch (const ClipBreaksOff& end) {
    const std::int64_t announced = source_.info().frameCount;
    if (end.frames() < 1 || end.frames() >= announced) throw;
    source_.setFrameCount(static_cast<std::int32_t>(end.frames()));
    console_.progress().end();
    console_.warn(fmt::format("{} breaks off after {} of {} frames; those are done.",
                              source_.clip().path, end.frames(), announced));
  }
  source_.endReading();
  checkAgainstClip(options, layerClip());
  fresh();
  applyEffectOptions(options, layerClip(), *instance_);
  pressAnalyze();
}

void Workbench::adjust(const EffectOptions& options) {
  checkAgainstClip(options, layerClip());
  applyEffectOptions(options, layerClip(), *instance_);
  const EffectSettings settings = readSettings(*instance_);
  warnOfIdleOptions(options, settings, console_);
  if (settings.analyzed && levels().complete) return;
  console_.note("The changed settings need a new analysis.");
  pressAnalyze();
}

Levels Workbench::levels() {
  return readLevels(instance_->save().sequenceData);
}

}  // namespace cli
