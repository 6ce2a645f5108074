// ui/panel_colors.h — the panel's colours.
#pragma once

#include "hostapi/suites/drawbot.h"

namespace varilum::color {

inline constexpr DRAWBOT_ColorRGBA kGraphFrame{0.0F, 0.0F, 0.4F, 1.0F};
inline constexpr DRAWBOT_ColorRGBA kPlot{128.0F / 255.0F, 128.0F / 255.0F, 128.0F / 255.0F, 1.0F};
inline constexpr DRAWBOT_ColorRGBA kLabel{0.6667F, 0.6667F, 0.6667F, 1.0F};
inline constexpr DRAWBOT_ColorRGBA kNotice{0.6667F, 0.8667F, 0.0F, 1.0F};
inline constexpr DRAWBOT_ColorRGBA kInput{0.8667F, 0.8667F, 0.0F, 1.0F};
inline constexpr DRAWBOT_ColorRGBA kDesiredCurve{0.0F, 0.7333F, 0.0F, 1.0F};
inline constexpr DRAWBOT_ColorRGBA kDesiredHandle{0.0F, 0.8667F, 0.0F, 1.0F};
inline constexpr DRAWBOT_ColorRGBA kTimeLine{0.7333F, 0.0F, 0.0F, 1.0F};
inline constexpr DRAWBOT_ColorRGBA kOutline{0.0F, 0.0F, 0.0F, 1.0F};
inline constexpr DRAWBOT_ColorRGBA kHistogramFill{1.0F, 1.0F, 1.0F, 1.0F};
inline constexpr DRAWBOT_ColorRGBA kRed{0.7333F, 0.0F, 0.0F, 1.0F};
inline constexpr DRAWBOT_ColorRGBA kGreen{0.0F, 0.7333F, 0.0F, 1.0F};
inline constexpr DRAWBOT_ColorRGBA kBlue{0.0F, 0.0F, 0.7333F, 1.0F};

}  // namespace varilum::color
