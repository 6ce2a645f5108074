// media/component_rows.h — rows of one component between a picture's memory and plain floats.
#pragma once

#include <cstdint>

#include "media/pixel_layout.h"

namespace media {

/// out[i] = code value of element i (0..2^depth-1, or the float itself), for `count` elements of
/// the row that starts at `row`.
void loadRow(const std::uint8_t* row, const ComponentLayout& component, int count, float* out);

/// The reverse: rounded to nearest and clipped to 0..2^depth-1; floats are stored as they are.
/// Bits of other components that share the word are kept.
void storeRow(const float* in, const ComponentLayout& component, int count, std::uint8_t* row);

/// out[i] = in[i >> shift] for `count` elements.
void replicateRow(const float* in, int shift, int count, float* out);

/// out[i] = mean of the elements of `in` (there are `count`) whose index >> shift is i, times
/// `scale`.
void averageRow(const float* in, int shift, int count, float scale, float* out);

}  // namespace media
