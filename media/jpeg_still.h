// media/jpeg_still.h — a frame as a small JPEG file, for people to look at.
#pragma once

#include <string>

#include "media/picture.h"

namespace media {

/// Most pixels of a still; both keep it in the range where JPEG's colour matrix is FFmpeg's choice.
inline constexpr int kMostStillWidth = 960;
inline constexpr int kMostStillHeight = 540;

/// The picture as the bytes of a JPEG file, scaled down to fit into `width` x `height` pixels
/// (which are clamped to the most) with square pixels, both sides even; else never scaled up.
/// `clockwiseDegrees` turns it upright: a multiple of 90, as ClipInfo has it. Empty where media/ is
/// built without FFmpeg and has no JPEG encoder. Any thread. Throws Error{unsupported}.
std::string jpegStill(const Picture& picture, int clockwiseDegrees = 0, int width = kMostStillWidth,
                      int height = kMostStillHeight);

}  // namespace media
