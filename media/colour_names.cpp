// media/colour_names.cpp — a clip's colour properties between names and FFmpeg's numbers.
#include "media/colour_names.h"

#include "media/error.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace media {
namespace {

template <typename Value>
Value fromName(const std::string& name, int (*lookUp)(const char*), Value unknown,
               const char* what) {
  if (name.empty() || name == "unknown") return unknown;
  const int value = lookUp(name.c_str());
  if (value < 0) {
    throw Error(Problem::badOption, "\"" + name + "\" is not a " + what + " that FFmpeg knows.");
  }
  return static_cast<Value>(value);
}

std::string nameOr(const char* name) {
  return name == nullptr ? "unknown" : name;
}

}  // namespace

ColourProperties colourProperties(const ClipInfo& info) {
  return {
      fromName(info.colourRange, av_color_range_from_name, AVCOL_RANGE_UNSPECIFIED, "colour range"),
      fromName(info.colourMatrix, av_color_space_from_name, AVCOL_SPC_UNSPECIFIED, "colour matrix"),
      fromName(info.colourPrimaries, av_color_primaries_from_name, AVCOL_PRI_UNSPECIFIED,
               "set of colour primaries"),
      fromName(info.colourTransfer, av_color_transfer_from_name, AVCOL_TRC_UNSPECIFIED,
               "transfer characteristic")};
}

ColourProperties colourProperties(const AVFrame& frame) noexcept {
  return {frame.color_range, frame.colorspace, frame.color_primaries, frame.color_trc};
}

void setColour(AVFrame& frame, const ClipInfo& info) {
  const ColourProperties colour = colourProperties(info);
  frame.color_range = colour.range;
  frame.colorspace = colour.matrix;
  frame.color_primaries = colour.primaries;
  frame.color_trc = colour.transfer;
}

void nameColour(ClipInfo& info, const ColourProperties& colour) {
  info.colourRange = nameOr(av_color_range_name(colour.range));
  info.colourMatrix = nameOr(av_color_space_name(colour.matrix));
  info.colourPrimaries = nameOr(av_color_primaries_name(colour.primaries));
  info.colourTransfer = nameOr(av_color_transfer_name(colour.transfer));
}

}  // namespace media
