// footage/likeness.h — how much two pictures differ, whatever their exposure and small movement.
#pragma once

#include <array>

#include "footage/frame_measure.h"

namespace footage {

/// How two pictures compare.
struct Comparison {
  double difference = 0;  ///< 0: the same picture; about 1: nothing in common
  /// Share of the structure that is the same in both: something large that moves into a picture
  /// leaves the rest as it was. 0..1.
  double kept = 1;
};

/// A frame's picture with its exposure taken out: logarithms of luminance less their mean, the same
/// less their surroundings (light that falls on a part of the scene drops out), and colour.
class Picture {
 public:
  explicit Picture(const FrameMeasure& frame);

  /// The second picture is shifted to where it fits best, up to a third of the frame, grown or
  /// shrunk a little, and its parts shifted a little each, as handheld cameras do.
  Comparison compare(const Picture& other) const;

  /// Root mean square steps between neighbours, in levels. Motion blur takes away those along it.
  double sharpnessAcross() const noexcept { return across_; }
  double sharpnessDown() const noexcept { return down_; }

 private:
  struct Shift {
    int x = 0;
    int y = 0;
  };
  double coarseDifference(const Picture& other, const Shift& shift) const;
  Shift coarseShift(const Picture& other) const;
  Comparison compareAt(const Picture& other, const Shift& centre, double zoom) const;

  static constexpr std::size_t kPlanes = 4;
  using Plane = std::array<float, kThumbnailCells>;
  using CoarsePlane = std::array<float, kMosaicCells>;
  std::array<Plane, 2> fine_;
  std::array<CoarsePlane, kPlanes> coarse_;
  double across_ = 0;
  double down_ = 0;
};

}  // namespace footage
