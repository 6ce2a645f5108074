// footage/exposure.h — whether pictures differ in nothing but how they were exposed.
#pragma once

#include "footage/frame_measure.h"

namespace footage {

/// Whether a gain makes the picture out of those before and after it, the same gain everywhere.
/// What moves between those two is not held against it.
bool isExposure(const Thumbnail& picture, const Thumbnail& before, const Thumbnail& after);

}  // namespace footage
