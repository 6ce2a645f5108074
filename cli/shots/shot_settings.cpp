// cli/shots/shot_settings.cpp — options that count in the clip's frames, as they hold within one
// shot.
#include "cli/shots/shot_settings.h"

#include <algorithm>
#include <vector>

#include "footage/targets.h"

namespace cli {
namespace {

// Keyframes on the shot's pictures that run as those of the clip do.
std::vector<LevelKey> keysWithin(const ShotFrames& shot, const std::vector<LevelKey>& clip) {
  if (clip.empty() || !clip.front().frame) return clip;
  std::vector<footage::LevelPoint> points;
  for (const LevelKey& key : clip) points.push_back({*key.frame, key.value});
  std::sort(points.begin(), points.end(),
            [](const auto& a, const auto& b) { return a.frame < b.frame; });
  std::vector<std::int64_t> frames;
  if (points.front().frame < shot.first()) frames.push_back(shot.first());
  for (const auto& point : points) {
    if (shot.holds(point.frame)) frames.push_back(point.frame);
  }
  if (points.back().frame > shot.last()) frames.push_back(shot.last());
  std::vector<std::int32_t> pictures;
  for (const std::int64_t frame : frames) pictures.push_back(shot.pictureOf(frame));
  if (!shot.duplicates().empty()) {
    // Pictures pass more slowly where they are held: every one of them needs its key.
    const std::int32_t first = pictures.front();
    const std::int32_t last = pictures.back();
    pictures.clear();
    for (std::int32_t p = first; p <= last; ++p) pictures.push_back(p);
  }
  for (auto& point : points) point.frame -= shot.first();
  const std::vector<double> levels = footage::pointsTarget(points, shot.count());
  std::vector<LevelKey> keys;
  for (const std::int32_t p : pictures) {
    if (!keys.empty() && *keys.back().frame == p) continue;
    keys.push_back({p, levels[static_cast<std::size_t>(shot.frameOf(p) - shot.first())]});
  }
  return keys;
}

FrameSpan picturesOf(const ShotFrames& shot, std::int64_t first, std::int64_t last) {
  return {shot.pictureOf(std::max(first, shot.first())),
          shot.pictureOf(std::min(last, shot.last()))};
}

}  // namespace

EffectOptions optionsWithin(const ShotFindings& shot, const EffectOptions& clip) {
  EffectOptions options = clip;
  if (clip.target && clip.target->kind == Target::Kind::points) {
    for (const auto& point : clip.target->points) {
      options.luminance.push_back({point.frame, point.level});
    }
  }
  options.luminance = keysWithin(shot.frames, options.luminance);
  options.shiftSpread = keysWithin(shot.frames, clip.shiftSpread);
  Switch<std::vector<FrameSpan>> left;
  if (clip.dontDeflicker) {
    for (const FrameSpan& span : clip.dontDeflicker->value) {
      const std::int64_t last = span.last.value_or(shot.frames.last());
      if (span.first > shot.frames.last() || last < shot.frames.first()) continue;
      left.value.push_back(picturesOf(shot.frames, span.first, last));
    }
  }
  for (const ShotOutlier& outlier : shot.outliers) {
    if (!outlier.left) continue;
    left.value.push_back(picturesOf(shot.frames, outlier.found.first, outlier.found.last));
  }
  left.on = !left.value.empty();
  if (clip.dontDeflicker || left.on) options.dontDeflicker = left;
  return options;
}

}  // namespace cli
