// plugin/param_index.h — positions of the parameters; saved projects know them by these numbers.
#pragma once

#include <cstdint>

namespace varilum {

enum ParamIndex : std::int32_t {
  PARAM_INPUT = 0,  // the layer; the host's own
  PARAM_INFO_GROUP = 1,
  PARAM_ABOUT = 2,
  PARAM_HELP = 4,
  PARAM_ANALYZE = 7,
  PARAM_CLEAR = 8,
  PARAM_ANALYZE_OPTIONS = 9,
  PARAM_SPEED = 10,
  PARAM_USE_SUBRECT = 11,
  PARAM_CORNER1 = 12,
  PARAM_CORNER2 = 13,
  PARAM_FAVOR_BRIGHTER = 14,
  PARAM_DONT_DEFLICKER = 15,
  PARAM_DEFLICKER_OPTIONS = 17,
  PARAM_DEFLICKER_METHOD = 18,
  PARAM_CORRECTION_METHOD = 19,
  PARAM_USE_GAMMA = 20,
  PARAM_SMOOTHING_FRAMES = 21,
  PARAM_ADJUST_CLIPPING = 22,
  PARAM_CLIPPING_PERCENT = 23,
  PARAM_LUMINANCE = 25,
  PARAM_SHIFT_SPREAD = 26,
  PARAM_GRAPH_OPTIONS = 27,
  PARAM_ZOOM_LUMINANCE = 28,
  PARAM_SHOW_RED = 29,
  PARAM_SHOW_GREEN = 30,
  PARAM_SHOW_BLUE = 31,
  PARAM_COUNTER = 33,
  PARAM_NEEDS_ANALYZE = 34,  // despite its name, on means analysed
  PARAM_COUNT = 35,
};

}  // namespace varilum
