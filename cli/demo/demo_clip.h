// cli/demo/demo_clip.h — the demo's clip: the scene with known exposure faults, written and
// measured.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <vector>

#include "cli/demo/demo_scene.h"
#include "cli/job/worker_pool.h"

namespace cli {

inline constexpr int kDemoWidth = 960;
inline constexpr int kDemoHeight = 540;

/// Told after every frame how many are done. May throw to stop.
using FrameDone = std::function<void(std::int64_t done)>;

/// Writes the scene as an H.264 clip (4:2:0, BT.709, looks lossless), frame i multiplied by
/// gains[i], rounded and clipped to 8 bits. Returns each frame's mean luminance before its gain.
/// Nothing is left behind when it throws (media::Error, or what `done` throws).
std::vector<double> writeDemoClip(const std::filesystem::path& path, bool force,
                                  const DemoScene& scene, std::span<const double> gains,
                                  WorkerPool& pool, const FrameDone& done);

/// What the decoder makes of a clip.
struct ClipMeasures {
  std::vector<double> levels;  ///< mean luminance of each frame, 0..255
  /// Mean absolute difference from the scene, in levels of 255, once the frame's mean luminance is
  /// scaled to the scene's: what brightness alone cannot put right. Over every tenth frame.
  double pictureError = 0.0;
};

/// Decodes the file at `path`, made from `scene`. Throws media::Error.
ClipMeasures measureDemoClip(const std::filesystem::path& path, const DemoScene& scene,
                             WorkerPool& pool, const FrameDone& done);

}  // namespace cli
