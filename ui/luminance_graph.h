// ui/luminance_graph.h — the lower graph: input and desired levels of all frames.
#pragma once

#include "ui/histogram_graph.h"
#include "ui/layout.h"
#include "ui/painter.h"

namespace varilum {

// Draws the graph over whatever is there, and keeps the variances of both curves. Without memory
// for the points, there are no curves.
void drawLuminanceGraph(Painter& painter, const Font& font, const PanelLayout& layout,
                        const PanelData& data);

}  // namespace varilum
