// footage/bar_scan.h — how far dark, even bars reach into one frame.
#pragma once

#include "footage/frame_measure.h"

namespace footage {

/// Fills in measure.top, bottom, left and right.
void scanBars(const ArgbRows& pixels, FrameMeasure& measure);

}  // namespace footage
