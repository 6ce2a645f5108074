// cli/workbench.cpp — a clip on the table: the effect loaded and applied to it.
#include "cli/workbench.h"

#include <fmt/format.h>

#include <algorithm>
#include <thread>
#include <utility>

#include "cli/effect_location.h"
#include "cli/error.h"
#include "cli/options/memory_size.h"
#include "cli/options/output_options.h"
#include "cli/shots/level_match.h"
#include "cli/shots/shot_settings.h"
#include "cli/terminal/interrupt.h"
#include "host/error.h"
#include "host/listener.h"
#include "media/colour_transform.h"

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

// What is looked at of an 8-bit image: what the settings have measured.
footage::ArgbRows rowsOf(const host::Image& image, const EffectSettings& settings) {
  const media::ConstArgbView view = viewOf(image);
  const auto* pixels = static_cast<const std::uint8_t*>(view.row(0));
  if (!settings.useSubrect) return {pixels, view.rowBytes, view.width, view.height};
  const int left = std::clamp(settings.rect[0], 0, view.width);
  const int top = std::clamp(settings.rect[1], 0, view.height);
  return {pixels + top * view.rowBytes + 4 * left, view.rowBytes,
          std::clamp(settings.rect[2], left, view.width) - left,
          std::clamp(settings.rect[3], top, view.height) - top};
}

// Whether the analysis of the whole clip as one shot is the one that the findings ask for.
bool asAnalyzed(const std::vector<FoundShot>& found, const EffectOptions& options) {
  const ShotFindings& first = found.front().findings;
  const bool leaves = std::any_of(first.outliers.begin(), first.outliers.end(),
                                  [](const ShotOutlier& outlier) { return outlier.left; });
  return found.size() == 1 && first.frames.duplicates().empty() && !leaves &&
         !(options.subrectAuto && first.matte);
}

}  // namespace

// Passes on what the effect says. Its count of analysed frames runs one ahead of the truth; from a
// dialog of its own it comes in percent.
class Workbench::Announcer final : public host::Listener {
 public:
  Announcer(Console& console, host::Role role)
      : console_(console), percent_(role == host::Role::premiere) {}

  std::int64_t frames = 0;  // to be analysed in this shot
  std::int64_t before = 0;  // of shots analysed before it

  void message(host::MessageKind kind, std::string_view, std::string_view text) override {
    if (kind == host::MessageKind::box) return console_.note(std::string(text));
    if (kind != host::MessageKind::info) console_.warn(std::string(text));
  }
  bool progress(std::int32_t done, std::int32_t total) override {
    const std::int64_t all = frames;
    console_.progress().update(before + (percent_ ? (done * all + total / 2) / total
                                                  : std::min<std::int64_t>(done - 1, total)));
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
  takeAsOneShot();
}

Workbench::~Workbench() {
  shots_.clear();
  effect_.reset();
  host_.setListener(nullptr);
}

std::size_t Workbench::shotAt(std::int64_t frame) const noexcept {
  const auto after =
      std::upper_bound(shots_.begin(), shots_.end(), frame,
                       [](std::int64_t f, const auto& shot) { return f < shot->frames().first(); });
  return after == shots_.begin() ? 0 : static_cast<std::size_t>(after - shots_.begin()) - 1;
}

std::vector<ShotFindings> Workbench::found() const {
  std::vector<ShotFindings> found;
  for (const auto& shot : shots_) found.push_back(shot->found());
  return found;
}

// The clip as options within a layer are checked and applied: its own shape, the layer's length.
media::ClipInfo Workbench::clipOf(const ShotFrames& frames) const {
  media::ClipInfo clip = source_.clip();
  clip.frameCount = frames.pictureCount();
  return clip;
}

void Workbench::takeAsOneShot() {
  shots_.clear();
  const ShotFindings whole{ShotFrames(0, source_.info().frameCount), {}, {}};
  shots_.push_back(std::make_unique<Shot>(*effect_, source_, whole));
}

void Workbench::open(const Project& project) {
  shots_.clear();
  source_.setFrameCount(project.layerFrames);
  target_ = targetFromProject(project.target);
  for (const ProjectShot& shot : project.shots) {
    shots_.push_back(std::make_unique<Shot>(*effect_, source_, shot.found, shot.effect));
  }
}

void Workbench::apply(const EffectOptions& options, Shot& shot) {
  applyEffectOptions(optionsWithin(shot.found(), options), clipOf(shot.frames()),
                     shot.found().matte, shot.instance());
}

void Workbench::pressAnalyze(const std::vector<Shot*>& shots, const char* phase) {
  std::int64_t pictures = 0;
  for (const Shot* shot : shots) pictures += shot->frames().pictureCount();
  console_.progress().begin(phase, pictures);
  announcer_->before = 0;
  for (Shot* shot : shots) {
    announcer_->frames = shot->frames().pictureCount();
    try {
      shot->instance().press("Analyze");
    } catch (const host::Cancelled&) {
      throw Interrupted();
    }
    if (!shot->levels().complete) {
      throw Failure("The effect could not analyse every frame of the clip.");
    }
    announcer_->before += announcer_->frames;
    console_.progress().update(announcer_->before);
  }
  source_.endReading();
  console_.progress().end();
}

// Analyses the clip as one shot and looks for shots in its frames as they pass by.
std::vector<FoundShot> Workbench::analyzeWhole(const EffectOptions& options,
                                               const ShotOptions& shots,
                                               const std::vector<std::int64_t>& cuts) {
  takeAsOneShot();
  Shot& whole = *shots_.front();
  apply(options, whole);
  const EffectSettings settings = readSettings(whole.instance());
  ShotFinder finder(shots, cuts);
  whole.layer().observe([&](std::int32_t, const host::Image& image) {
    finder.add(footage::measureFrame(rowsOf(image, settings)));
  });
  pressAnalyze({&whole}, "Analyzing");
  // The effect passes over frames that it is not to deflicker.
  whole.layer().endObserving();
  source_.endReading();
  return finder.finish();
}

std::vector<FoundShot> Workbench::survey(const EffectOptions& options, const ShotOptions& shots) {
  std::vector<std::int64_t> cuts;
  if (shots.shots == ShotOptions::Shots::listed) {
    cuts = readShotList(shots.list, source_.info().frameCount);
  }
  try {
    return analyzeWhole(options, shots, cuts);
  } catch (const ClipBreaksOff& end) {
    const std::int64_t announced = source_.info().frameCount;
    if (end.frames() < 1 || end.frames() >= announced) throw;
    source_.setFrameCount(static_cast<std::int32_t>(end.frames()));
    console_.progress().end();
    console_.warn(fmt::format("{} breaks off after {} of {} frames; those are done.",
                              source_.clip().path, end.frames(), announced));
  }
  source_.endReading();
  checkAgainstClip(options, clipOf({0, source_.info().frameCount}));
  return analyzeWhole(options, shots, cuts);
}

void Workbench::analyze(const EffectOptions& asked, const ShotOptions& shotOptions) {
  EffectOptions options = asked;
  if (!options.speed) options.speed = kUsualSpeed;
  checkAgainstClip(options, clipOf({0, source_.info().frameCount}));
  ShotOptions wanted = shotOptions;
  wanted.keepDuplicates = wanted.keepDuplicates || setsLevelsByFrame(options);
  std::vector<FoundShot> found = survey(options, wanted);
  if (asAnalyzed(found, options)) {
    shots_.front()->setFound(found.front().findings);
  } else {
    shots_.clear();
    std::vector<Shot*> all;
    for (const FoundShot& shot : found) {
      shots_.push_back(std::make_unique<Shot>(*effect_, source_, shot.findings));
      apply(options, *shots_.back());
      all.push_back(shots_.back().get());
    }
    pressAnalyze(all, "Analyzing shots");
  }
  for (std::size_t i = 0; i < shots_.size(); ++i) shots_[i]->light = std::move(found[i].light);
  warnOfIdleOptions(options, readSettings(shots_.front()->instance()), console_);
  target_ = options.target.value_or(Target{});
  follow(target_, !options.shiftSpread.empty());
}

// What the curves of a target are drawn through. Levels that weigh bright pixels more are no lumas.
void Workbench::measureLumas() {
  std::vector<Shot*> unmeasured;
  std::int64_t pictures = 0;
  for (const auto& shot : shots_) {
    if (!shot->lumas.empty() || readSettings(shot->instance()).favorBrighter) continue;
    unmeasured.push_back(shot.get());
    pictures += shot->frames().pictureCount();
  }
  if (unmeasured.empty()) return;
  const media::ClipInfo& clip = source_.clip();
  const auto [red, green, blue] = media::lumaWeights(clip.colourMatrix, clip.width, clip.height);
  std::int64_t done = 0;
  console_.progress().begin("Measuring", pictures);
  for (Shot* shot : unmeasured) {
    const EffectSettings settings = readSettings(shot->instance());
    const host::LayerInfo& info = shot->layer().info();
    host::Image image(info.width, info.height, host::Depth::bits8);
    for (std::int32_t picture = 0; picture < info.frameCount; ++picture) {
      if (interrupted()) throw Interrupted();
      shot->layer().read(picture, image);
      shot->lumas.push_back(footage::profileLuma(rowsOf(image, settings), {red, green, blue}));
      console_.progress().update(++done);
    }
  }
  source_.endReading();
  console_.progress().end();
}

// Hands the curves of a target over as keyframes. The effect's own smoothing needs none.
void Workbench::follow(const Target& target, bool spreadGiven) {
  if (!isCurve(target)) return;
  if (target.kind == Target::Kind::ramp && shotAt(target.from) != shotAt(target.to)) {
    throw UsageError(fmt::format(
        "--target: there is a cut between frames {} and {}; choose both in one shot, or add "
        "--shots off.",
        target.from, target.to));
  }
  measureLumas();
  const host::Depth depth = renderDepth({}, source_.clip(), host_.role());
  for (const auto& shot : shots_) {
    if (target.kind == Target::Kind::ramp && !shot->frames().holds(target.from)) continue;
    const EffectSettings settings = readSettings(shot->instance());
    // With 'shift' the smoothed spread goes on being what frames are brought to.
    const bool spreads = settings.correctionMethod == kCorrectShift && !spreadGiven;
    const std::vector<double> wanted =
        targetLevels(target, shot->frames(), levelsToFollow(*shot), settings.smoothingFrames);
    followLumas(*effect_, *shot, wanted,
                spreads ? shot->levels().desiredSpread : std::vector<double>{}, depth,
                renderPath(settings, depth, host_.role()));
  }
}

void Workbench::adjust(const EffectOptions& options) {
  checkAgainstClip(options, clipOf({0, source_.info().frameCount}));
  if (options.target) target_ = *options.target;
  if (options.deflickerMethod || !options.luminance.empty()) target_ = {};
  // A curve is worked out anew, from the effect's own smoothing, when anything is asked for. Else
  // its keyframes stay, which may have been edited since.
  const bool anew = isCurve(target_) && asksForAnything(options);
  EffectOptions effective = options;
  if (anew) effective.target = target_;
  std::vector<Shot*> stale;
  for (const auto& shot : shots_) {
    apply(effective, *shot);
    if (!readSettings(shot->instance()).analyzed || !shot->levels().complete) {
      stale.push_back(shot.get());
    }
  }
  if (!stale.empty()) {
    console_.note("The changed settings need a new analysis.");
    pressAnalyze(stale, "Analyzing");
    for (Shot* shot : stale) shot->lumas.clear();  // of another rectangle, perhaps
  }
  const bool held = std::any_of(shots_.begin(), shots_.end(), [](const auto& shot) {
    return !shot->frames().duplicates().empty();
  });
  if (held && setsLevelsByFrame(options)) {
    console_.warn(
        "Repeated frames follow the one they repeat; to give each its own level, analyse "
        "with --duplicates keep.");
  }
  warnOfIdleOptions(effective, readSettings(shots_.front()->instance()), console_);
  if (anew || !stale.empty()) follow(target_, !options.shiftSpread.empty());
}

Levels Workbench::levels() {
  Levels all;
  for (const auto& shot : shots_) appendShot(all, shot->levels(), shot->frames());
  return all;
}

}  // namespace cli
