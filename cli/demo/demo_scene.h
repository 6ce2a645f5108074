// cli/demo/demo_scene.h — the demo's steady picture: a landscape on the move under a slow sun.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "cli/demo/demo_noise.h"

namespace cli {

/// Red, green, blue on the 0..255 scale, as code values of a display; not rounded, not clipped.
using SceneColour = std::array<float, 3>;

/// Draws any frame by itself, always the same. What moves: clouds, two ridges of hills, the ground
/// under a travelling camera, balloons and the sun. Brightness drifts by a tenth over the clip as
/// daylight does. Highlights stay near 200, so that a brighter exposure does not clip at once.
/// Film grain is new in every frame. Thread-safe.
class DemoScene {
 public:
  DemoScene(int width, int height, int frames);

  int width() const noexcept { return width_; }
  int height() const noexcept { return height_; }
  int frames() const noexcept { return frames_; }

  /// Rows first..last - 1 (from the top) of a frame, one after another into `rows`, which has
  /// (last - first) * width() elements. A strip of many rows is quicker than its rows one by one.
  void draw(int frame, int first, int last, std::span<SceneColour> rows) const;

 private:
  /// What holds for a whole frame.
  struct Moment;
  Moment momentOf(int frame) const;
  SceneColour sky(const Moment& moment, float x, float y) const;
  SceneColour ground(const Moment& moment, float x, float y) const;
  float ridge(const Moment& moment, float x, std::size_t layer) const;

  int width_;
  int height_;
  int frames_;
  NoiseTile clouds_;
  NoiseTile soil_;
  std::vector<float> grain_;
};

}  // namespace cli
