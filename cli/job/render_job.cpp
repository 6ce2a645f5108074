// cli/job/render_job.cpp — an analysed clip written through the effect, with what was gained.
#include "cli/job/render_job.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/error.h"
#include "cli/job/job_report.h"
#include "cli/shots/forecast.h"
#include "media/error.h"

namespace cli {
namespace {

void warnOfIdleClipping(const EffectSettings& settings, host::Depth depth, Console& console) {
  if (!settings.adjustClipping) return;
  if (settings.correctionMethod == kCorrectGamma) {
    console.warn("--adjust-clipping does not act with --correction-method gamma.");
  } else if (depth != host::Depth::bits8) {
    console.warn(fmt::format(
        "--adjust-clipping does not act at {} bits; add --depth 8 if it matters more than depth.",
        static_cast<int>(depth)));
  }
}

LevelArea areaOf(const EffectSettings& settings) {
  LevelArea area;
  area.favorBrighter = settings.favorBrighter;
  if (settings.useSubrect) {
    area.left = settings.rect[0];
    area.top = settings.rect[1];
    area.right = settings.rect[2];
    area.bottom = settings.rect[3];
  }
  return area;
}

// One run of the effect over all shots, shot by shot as the clip goes on.
class Job {
 public:
  Job(Workbench& bench, host::Depth depth, int workers, media::FrameRange frames, Console& console)
      : bench_(bench), console_(console) {
    for (std::size_t i = 0; i < bench.shotCount(); ++i) addShot(bench.shot(i), depth);
    plan_.first = frames.first;
    plan_.last = frames.last;
    plan_.depth = depth;
    plan_.workers = workers;
    plan_.route = [this](std::int64_t frame) { return route(frame); };
    result_.first = frames.first;
    result_.target = toText(bench.target());
    result_.depth = depth;
    warnOfIdleClipping(result_.shots.front().settings, depth, console);
  }
  Job(const Job&) = delete;
  Job& operator=(const Job&) = delete;

  /// Shots that can be seen to come out worse are passed through.
  void passWhatIsForeseen() {
    for (std::size_t i = 0; i < shots_.size(); ++i) {
      const std::int64_t last = bench_.shot(i).frames().last();
      if (last < plan_.first || bench_.shot(i).frames().first() > plan_.last) continue;
      passIfWorse(i, foreseen(i));
    }
  }

  /// Whether shots that came out worse are now to be passed through instead.
  bool passWhatIsMeasured() {
    bool any = false;
    for (std::size_t i = 0; i < shots_.size(); ++i) {
      const ShotResult& shot = result_.shots[i];
      any = passIfWorse(i, {shot.before, shot.after}) || any;
    }
    return any;
  }

  void write(media::ClipWriter& writer, std::string_view phase,
             const std::function<void(const RenderedFrame&)>& observe) {
    result_.frames.clear();
    result_.frames.reserve(static_cast<std::size_t>(plan_.last - plan_.first + 1));
    Progress& progress = console_.progress();
    progress.begin(std::string(phase), plan_.last - plan_.first + 1);
    renderFrames(bench_.source(), plan_, [&](RenderedFrame& frame) {
      writer.write(frame.picture);
      if (observe) observe(frame);
      frame.original = {};
      frame.picture = {};
      result_.frames.push_back(resultOf(frame));
      progress.update(static_cast<std::int64_t>(result_.frames.size()));
    });
    progress.end();
    if (result_.frames.empty()) throw Failure("No frame of the clip could be decoded.");
    measureShots(result_);
  }

  JobResult& result() noexcept { return result_; }

 private:
  struct Prepared {
    std::vector<double> input;  // levels, one a picture
    std::vector<double> desired;
    LevelArea area;
    bool followed = false;  // the user set its levels one by one
    bool warned = false;
  };
  struct Figures {
    FlickerFigures before;
    FlickerFigures after;
  };

  void addShot(Shot& shot, host::Depth depth) {
    ShotResult result;
    result.found = shot.found();
    result.settings = readSettings(shot.instance());
    Levels levels = shot.levels();
    Prepared prepared{std::move(levels.input), std::move(levels.desired), areaOf(result.settings),
                      result.settings.keyframes && !isCurve(bench_.target()), false};
    plan_.parts.push_back(
        {&shot.instance(), renderPath(result.settings, depth, bench_.host().role())});
    shots_.push_back(std::move(prepared));
    result_.shots.push_back(std::move(result));
  }

  // Black pictures and those not to be deflickered have no level: the effect has nothing to base a
  // correction on and would use that of whichever it rendered before.
  bool isCorrected(std::size_t shot, std::int32_t picture) const {
    return !result_.shots[shot].passedThrough &&
           shots_[shot].input[static_cast<std::size_t>(picture)] > 0.0;
  }

  FrameRoute route(std::int64_t frame) const {
    const std::size_t shot = bench_.shotAt(frame);
    const ShotFrames& frames = result_.shots[shot].found.frames;
    const std::int32_t picture = frames.pictureOf(frame);
    FrameRoute route;
    route.area = shots_[shot].area;
    if (!isCorrected(shot, picture)) return route;
    route.part = shot;
    route.layerFrame = picture;
    route.readAs = frames.frameOf(picture);
    return route;
  }

  FrameResult resultOf(const RenderedFrame& frame) const {
    FrameResult result;
    result.shot = bench_.shotAt(frame.frame);
    const ShotFindings& found = result_.shots[result.shot].found;
    const std::int32_t picture = found.frames.pictureOf(frame.frame);
    result.input = frame.inputLevel;
    result.output = frame.outputLevel;
    result.target = isCorrected(result.shot, picture)
                        ? shots_[result.shot].desired[static_cast<std::size_t>(picture)]
                        : frame.inputLevel;
    result.original = found.frames.frameOf(picture);
    result.untouched = frame.untouched;
    result.outlier =
        std::any_of(found.outliers.begin(), found.outliers.end(), [&](const ShotOutlier& outlier) {
          return outlier.found.first <= frame.frame && frame.frame <= outlier.found.last;
        });
    return result;
  }

  Figures foreseen(std::size_t index) {
    Shot& shot = bench_.shot(index);
    const EffectSettings& settings = result_.shots[index].settings;
    const Forecast levels = forecast(bench_.effect(), shot, plan_.depth, plan_.parts[index].path,
                                     settings.favorBrighter);
    if (levels.input.empty()) return {};
    std::vector<double> before;
    std::vector<double> after;
    const ShotFrames& frames = shot.frames();
    for (std::int64_t frame = frames.first(); frame <= frames.last(); ++frame) {
      const auto picture = static_cast<std::size_t>(frames.pictureOf(frame));
      before.push_back(levels.input[picture]);
      after.push_back(levels.output[picture]);
    }
    return {figuresOf(before), figuresOf(after)};
  }

  bool passIfWorse(std::size_t index, const Figures& figures) {
    ShotResult& shot = result_.shots[index];
    Prepared& prepared = shots_[index];
    if (shot.passedThrough || prepared.warned || !isWorse(figures.after, figures.before)) {
      return false;
    }
    prepared.warned = true;
    shot.passedThrough = !prepared.followed;
    warnOfWorseShot(result_, index, figures.before, figures.after, console_);
    return shot.passedThrough;
  }

  Workbench& bench_;
  Console& console_;
  RenderPlan plan_;
  std::vector<Prepared> shots_;
  JobResult result_;
};

}  // namespace

Output::Output(std::string path, Workbench& bench, const OutputOptions& options,
               const std::optional<media::FrameRange>& frames, Console& console)
    : path_(std::move(path)), bench_(bench), options_(options.write) {
  options_.overwrite = options.force;
  options_.frames = frames;
  try {
    restart();
  } catch (const media::Error& error) {
    if (error.problem() != media::Problem::exists) throw;
    throw Failure(fmt::format(
        "{} is there already; choose another name, or add --force to replace it.", path_));
  }
  for (const std::string& note : writer_->notes()) console.note(note);
}

void Output::restart() {
  writer_.reset();
  writer_.emplace(path_, bench_.source().reader(), options_);
}

JobResult renderTo(Output& output, Workbench& bench, const OutputOptions& options, int workers,
                   media::FrameRange frames, Console& console,
                   const std::function<void(const RenderedFrame&)>& observe) {
  const auto start = std::chrono::steady_clock::now();
  const host::Role role = bench.host().role();
  const host::Depth depth = renderDepth(options, bench.source().clip(), role);
  if (role == host::Role::premiere && bench.source().clip().workingDepth != media::Depth::eight) {
    console.warn("The clip has more than the 8 bits that --host-role premiere renders with.");
  }
  Job job(bench, depth, workers, frames, console);
  job.passWhatIsForeseen();
  job.write(output.writer(), "Rendering", observe);
  if (job.passWhatIsMeasured()) {
    output.restart();
    job.write(output.writer(), "Rendering again", observe);
  }
  output.writer().finish();
  JobResult& result = job.result();
  result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();

  const std::int64_t total = frames.last - frames.first + 1;
  if (static_cast<std::int64_t>(result.frames.size()) < total) {
    console.warn(fmt::format("The clip breaks off: {} of {} frames were written.",
                             result.frames.size(), total));
  }
  for (const std::string& warning : bench.source().reader().warnings()) console.warn(warning);
  return std::move(result);
}

}  // namespace cli
