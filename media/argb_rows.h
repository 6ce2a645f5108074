// media/argb_rows.h — rows of ARGB pixels to and from three rows of code values.
#pragma once

#include "media/argb_view.h"
#include "media/colour_transform.h"

namespace media {

/// Rows of code values as floats, each of the row's width. `alpha` may be null: opaque.
struct CodeRows {
  const float* first = nullptr;   ///< red or luma
  const float* second = nullptr;  ///< green or Cb
  const float* third = nullptr;   ///< blue or Cr
  const float* alpha = nullptr;
};

struct MutableCodeRows {
  float* first = nullptr;
  float* second = nullptr;
  float* third = nullptr;
  float* alpha = nullptr;  ///< null: not wanted
};

/// Writes `width` ARGB pixels of `depth` at `out`, rounded and clipped for integer depths.
void packArgbRow(const CodeRows& codes, const ColourTransform& transform, Depth depth, int width,
                 void* out);

/// Code values, not yet rounded, of `width` ARGB pixels.
void unpackArgbRow(const void* in, const ColourTransform& transform, Depth depth, int width,
                   const MutableCodeRows& codes);

}  // namespace media
