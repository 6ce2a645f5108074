// footage/matte.h — letterbox and pillar box.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <vector>

#include "footage/frame_measure.h"

namespace footage {

/// Pixels, right and bottom exclusive.
struct Rectangle {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  friend bool operator==(const Rectangle&, const Rectangle&) = default;
};

/// Finds the bars of a shot (or clip) while its frames come in. It keeps 16 bytes of each.
class MatteFinder {
 public:
  void add(const FrameMeasure& frame);

  /// The live picture between dark bars along the edges; nothing when there are no bars or when it
  /// is too dark to tell. Frames that differ in size from the first take no part.
  std::optional<Rectangle> find() const;

 private:
  int width_ = 0;
  int height_ = 0;
  std::array<std::vector<Bar>, 4> sides_;  // top, bottom, left, right
};

/// The live picture of a whole shot.
std::optional<Rectangle> findMatte(std::span<const FrameMeasure> shot);

}  // namespace footage
