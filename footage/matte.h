// footage/matte.h — letterbox and pillar box.
#pragma once

#include <optional>
#include <span>

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

/// The live picture of a shot (or clip) with dark bars along its edges; nothing when there are no
/// bars or when it is too dark to tell. Frames that differ in size from the first take no part.
std::optional<Rectangle> findMatte(std::span<const FrameMeasure> shot);

}  // namespace footage
