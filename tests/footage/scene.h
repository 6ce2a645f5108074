// tests/footage/scene.h — made-up places that a made-up camera looks at.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "tests/footage/random_numbers.h"

namespace footage::test {

/// Red, green, blue; 0..255, not rounded, not clipped.
using Colour = std::array<float, 3>;

struct Frame {
  Frame(int w, int h)
      : width(w), height(h), pixels(static_cast<std::size_t>(w) * static_cast<std::size_t>(h)) {}

  int width;
  int height;
  std::vector<Colour> pixels;
};

/// What a place looks like.
struct PlaceStyle {
  double roughness = 0.5;   ///< how much weaker each finer octave of the ground's noise is
  int shapes = 60;          ///< things that stand around
  double contrast = 1;      ///< 1: colours reach from dark to bright
  double saturation = 0.6;  ///< 0: grey
  bool night = false;       ///< all but dark, with a few lights
};

/// A picture without ends, four frame widths on a side, that repeats beyond.
class Place {
 public:
  Place(std::uint64_t seed, const PlaceStyle& style);

  /// Position in frame widths.
  Colour at(double x, double y) const;

 private:
  static constexpr int kSide = 256;
  static constexpr int kTexelsAWidth = 64;

  void paintGround(RandomNumbers& random, const PlaceStyle& style);
  void paintShape(RandomNumbers& random, const PlaceStyle& style);
  void paintLight(RandomNumbers& random);
  Colour& texel(int x, int y);

  std::vector<Colour> texels_;
};

/// Where the camera looks at a moment and how it moves there. Frame widths.
struct CameraPose {
  double x = 0;
  double y = 0;
  double zoom = 1;
  double blurX = 0;  ///< way passed while the shutter was open
  double blurY = 0;
};

/// Something that moves through the frame, seen in frame widths from the frame's top left corner.
struct Passer {
  double x = 0;
  double y = 0;
  double vx = 0;  ///< a frame
  double vy = 0;
  double halfWidth = 0.1;
  double halfHeight = 0.1;
  double textureX = 0;  ///< where in the place its coat comes from
  double textureY = 0;
};

void drawPlace(const Place& place, const CameraPose& pose, Frame& frame);
/// Draws it as it is at `time`, in frames.
void drawPasser(const Passer& passer, double time, const Place& coat, Frame& frame);

}  // namespace footage::test
