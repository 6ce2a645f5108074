// media/pixel_conversion.h — pictures to the host's ARGB and back, losing nothing that fits.
#pragma once

#include <functional>

#include "media/argb_view.h"
#include "media/picture.h"

namespace media {

/// Runs `job(0)` ... `job(jobs - 1)` in any order on any threads and returns when all are done.
using ParallelFor = std::function<void(int jobs, const std::function<void(int)>& job)>;

/// Called once for every row of ARGB, in any order, while the row is still at hand.
using EachRow = std::function<void(int y)>;

/// Fills `argb` (the picture's width and height, any depth) from `picture`. Formats without alpha
/// give opaque. YUV follows the frame's range and matrix; a matrix the file leaves open is BT.709
/// from 1280 columns or 577 lines up and BT.601 below, as players guess. Chroma is replicated, so
/// that fromArgb() undoes it. Integer depths round to nearest and clip to 0..white.
/// `each` sees rows that are complete; with `parallel`, from several threads at once.
/// Thread-safe. Throws Error{unsupported} for sizes that differ.
void toArgb(const Picture& picture, const ArgbView& argb, const ParallelFor& parallel = {},
            const EachRow& each = {});

/// A picture with the format, size, timestamps, index, colour properties and side data of `like`
/// and the pixels of `argb` (same size, any depth). Chroma is the mean over its own samples.
/// Thread-safe. Throws Error{unsupported} for sizes that differ.
Picture fromArgb(const ConstArgbView& argb, const Picture& like, const ParallelFor& parallel = {},
                 const EachRow& each = {});

/// True if both views hold the same pixels bit for bit (padding is not looked at).
bool samePixels(const ConstArgbView& a, const ConstArgbView& b) noexcept;

/// True if `argb` is exactly what toArgb() makes of `picture`: then writing `picture` itself keeps
/// what RGB cannot hold. Converts again row by row and stops at the first difference; needs no
/// second buffer. Thread-safe.
bool isUnchanged(const ConstArgbView& argb, const Picture& picture);

}  // namespace media
