// analysis/analysis_rect.h — which part of a frame is measured, and how finely.
#pragma once

#include <cstdint>

#include "hostapi/command_data.h"
#include "hostapi/geometry.h"
#include "hostapi/parameters.h"
#include "stats/frame_stats.h"

namespace varilum {

// size x scale in whole numbers, saturated to 32 bits; the size itself without a denominator.
std::int32_t scaledSize(std::int32_t size, const PF_RationalScale& scale) noexcept;

// The rectangle between two corners in either order, in pixels (the points are 16.16; their whole
// parts count), cut to width x height. May be empty or turned inside out when the corners lie
// outside.
Rect worldAnalysisRect(const PF_PointDef& corner1, const PF_PointDef& corner2, std::int32_t width,
                       std::int32_t height) noexcept;

// The same over the layer at its present resolution, or all of that when useSubrect is off.
Rect layerAnalysisRect(const PF_InData& in, bool useSubrect, const PF_PointDef& corner1,
                       const PF_PointDef& corner2) noexcept;

// Step between sampled pixels and rows: the user's speed (16.16; 1 = every pixel), lowered until
// at least 60 samples cross the shorter side of rect. Never below 1; 1 for an empty rect.
std::int32_t samplingStep(std::int32_t speed, const Rect& rect) noexcept;

}  // namespace varilum
