// ui/histogram_graph.h — the upper graph: the current frame's histogram, levels and counts.
#pragma once

#include "hostapi/command_data.h"
#include "hostapi/parameters.h"
#include "stats/sequence_arrays.h"
#include "stats/sequence_state.h"
#include "ui/current_frame.h"
#include "ui/layout.h"
#include "ui/painter.h"

namespace varilum {

// What both graphs draw from. The arrays hold state's frames, or none when it has none.
struct PanelData {
  const PF_InData& in;
  PF_ParamDef** params;  // may be null: all switches count as off
  SequenceState& state;
  const LevelLocks& levels;
  CurrentFrame frame;
};

// Draws the graph over whatever is there, and keeps where its markers take clicks.
void drawHistogramGraph(Painter& painter, const Font& font, const PanelLayout& layout,
                        const char* title, const PanelData& data);

}  // namespace varilum
