// plugin/parameter_table.h — the parameters, as they are declared to the host.
#pragma once

#include <array>
#include <cstdint>

#include "hostapi/parameters.h"
#include "plugin/param_index.h"

namespace varilum {

inline constexpr std::uint32_t kNoText = 0;  // the empty text

// How a row comes by its UI flags when they depend on the host.
enum class Visibility : std::uint8_t { always, notInAfterEffects };

struct ParameterRow {
  std::int32_t index;
  std::int32_t type;     // PF_Param_*
  std::uint32_t nameId;  // of the string table; not used with a literal
  const char* literal;   // name in place of nameId, or null
  std::int32_t flags = 0;
  std::int32_t uiFlags = 0;
  std::uint32_t textId = kNoText;  // button text, popup choices, text beside a checkbox
  std::int32_t initial = 0;        // default: sliders and points in whole units, popups 1-based
  std::int32_t least = 0;          // sliders
  std::int32_t greatest = 0;       // sliders; popups: number of choices
  std::int16_t precision = 0;      // sliders
  Visibility visibility = Visibility::always;
};

// Sums of parameter flags.
inline constexpr std::int32_t kVaries = PF_ParamFlag_SUPERVISE;
inline constexpr std::int32_t kFixed = PF_ParamFlag_SUPERVISE | PF_ParamFlag_CANNOT_TIME_VARY;
inline constexpr std::int32_t kVariesCollapsed = kVaries | PF_ParamFlag_COLLAPSE_TWIRLY;
inline constexpr std::int32_t kFixedCollapsed = kFixed | PF_ParamFlag_COLLAPSE_TWIRLY;
inline constexpr std::int32_t kNeverShown = PF_PUI_INVISIBLE | PF_PUI_NO_ECW_UI;

inline constexpr std::int16_t kPanelWidth = 400;
inline constexpr std::int16_t kPanelHeight = 332;
inline constexpr float kCounterTolerance = 0.05f;

// Known to the host, and passed back with every call about a Luminance value.
inline constexpr std::uint32_t kLuminanceRefcon = 0xDEADBEEF;

inline constexpr auto kParameters = std::to_array<ParameterRow>({
    {PARAM_INFO_GROUP, PF_Param_GROUP_START, kNoText, "About and help"},
    {PARAM_ABOUT, PF_Param_BUTTON, 69, nullptr, kFixed, 0, 70, 0, 0, 0, 0,
     Visibility::notInAfterEffects},
    {3, PF_Param_BUTTON, kNoText, nullptr, kFixed, PF_PUI_INVISIBLE},  // keeps the numbering
    {PARAM_HELP, PF_Param_BUTTON, 74, nullptr, kFixed, 0, 75},
    {5, PF_Param_BUTTON, kNoText, nullptr, kFixed, PF_PUI_INVISIBLE},  // likewise
    {6, PF_Param_GROUP_END, kNoText, nullptr},
    {PARAM_ANALYZE, PF_Param_BUTTON, kNoText, " ", kFixed, 0, 54},
    {PARAM_CLEAR, PF_Param_BUTTON, kNoText, " ", kFixed, 0, 56},
    {PARAM_ANALYZE_OPTIONS, PF_Param_GROUP_START, 79, nullptr},
    // The label says 1 to 5; the range is wider on purpose.
    {PARAM_SPEED, PF_Param_FIX_SLIDER, 62, nullptr, kFixed, 0, kNoText, 5, 1, 20},
    {PARAM_USE_SUBRECT, PF_Param_CHECKBOX, 25, nullptr, kFixedCollapsed},
    {PARAM_CORNER1, PF_Param_POINT, 26, nullptr, kVaries, 0, kNoText, 25},
    {PARAM_CORNER2, PF_Param_POINT, 27, nullptr, kVaries, 0, kNoText, 75},
    {PARAM_FAVOR_BRIGHTER, PF_Param_CHECKBOX, 11, nullptr, kFixed, 0, 12},
    {PARAM_DONT_DEFLICKER, PF_Param_CHECKBOX, 14, nullptr, kVaries},
    {16, PF_Param_GROUP_END, kNoText, nullptr},
    {PARAM_DEFLICKER_OPTIONS, PF_Param_GROUP_START, 5, nullptr},
    {PARAM_DEFLICKER_METHOD, PF_Param_POPUP, 8, nullptr, kFixed, 0, 9, 2, 1, 2},
    {PARAM_CORRECTION_METHOD, PF_Param_POPUP, 6, nullptr, kFixed, 0, 7, 1, 1, 3},
    {PARAM_USE_GAMMA, PF_Param_CHECKBOX, 10, nullptr, kFixed, kNeverShown},
    {PARAM_SMOOTHING_FRAMES, PF_Param_FIX_SLIDER, 13, nullptr, kVariesCollapsed, 0, kNoText, 30, 1,
     60},
    {PARAM_ADJUST_CLIPPING, PF_Param_CHECKBOX, 23, nullptr, kFixed},
    {PARAM_CLIPPING_PERCENT, PF_Param_FIX_SLIDER, 24, nullptr, kVaries, 0, kNoText, 99, 10, 100},
    {24, PF_Param_GROUP_END, kNoText, nullptr},
    {PARAM_LUMINANCE, PF_Param_ARBITRARY_DATA, 3, nullptr, 0, PF_PUI_CONTROL},
    {PARAM_SHIFT_SPREAD, PF_Param_FIX_SLIDER, 4, nullptr, kVaries, 0, kNoText, 0, 0, 255, 2},
    {PARAM_GRAPH_OPTIONS, PF_Param_GROUP_START, 15, nullptr},
    {PARAM_ZOOM_LUMINANCE, PF_Param_CHECKBOX, 22, nullptr, kFixed},
    {PARAM_SHOW_RED, PF_Param_CHECKBOX, 16, nullptr, kFixed},
    {PARAM_SHOW_GREEN, PF_Param_CHECKBOX, 17, nullptr, kFixed},
    {PARAM_SHOW_BLUE, PF_Param_CHECKBOX, 18, nullptr, kFixed},
    {32, PF_Param_GROUP_END, kNoText, nullptr},
    {PARAM_COUNTER, PF_Param_FLOAT_SLIDER, kNoText, "Counter", kVaries, PF_PUI_INVISIBLE, kNoText,
     0, 0, 64000, 2},
    {PARAM_NEEDS_ANALYZE, PF_Param_CHECKBOX, kNoText, "Needs Analyze", kVaries, PF_PUI_INVISIBLE},
});

consteval bool everyRowStandsAtItsIndex() {
  std::int32_t index = 1;  // the host declares the layer itself
  for (const ParameterRow& row : kParameters) {
    if (row.index != index++) return false;
  }
  return index == PARAM_COUNT;
}
static_assert(everyRowStandsAtItsIndex());

}  // namespace varilum
