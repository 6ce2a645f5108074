// media/colour_names.h — a clip's colour properties between names and FFmpeg's numbers.
#pragma once

#include "media/av_handles.h"
#include "media/clip_info.h"

namespace media {

struct ColourProperties {
  AVColorRange range = AVCOL_RANGE_UNSPECIFIED;
  AVColorSpace matrix = AVCOL_SPC_UNSPECIFIED;
  AVColorPrimaries primaries = AVCOL_PRI_UNSPECIFIED;
  AVColorTransferCharacteristic transfer = AVCOL_TRC_UNSPECIFIED;
};

/// Throws Error{badOption} for names FFmpeg does not know; empty counts as "unknown".
ColourProperties colourProperties(const ClipInfo& info);

ColourProperties colourProperties(const AVFrame& frame) noexcept;

void setColour(AVFrame& frame, const ClipInfo& info);

/// Writes the four names into `info`.
void nameColour(ClipInfo& info, const ColourProperties& colour);

}  // namespace media
