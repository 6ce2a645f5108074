// media/stored_level.h — how bright a picture is by the numbers that its file keeps.
#pragma once

#include "media/picture.h"

namespace media {

/// Mean of the first component (luma, grey or red) over all its samples, 0..255 for code values
/// from 0 to the largest, or 255 times a float. Unlike RGB it has what lies below black and beyond
/// pure colours. Thread-safe. Throws Error{unsupported} for formats without a layout.
double storedLevel(const Picture& picture);

}  // namespace media
