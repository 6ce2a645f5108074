// ui/draw.cpp — drawing the panel.
#include "ui/draw.h"

#include "resources/string_table.h"
#include "stats/sequence_arrays.h"
#include "ui/current_frame.h"
#include "ui/drawbot_suites.h"
#include "ui/histogram_graph.h"
#include "ui/layout.h"
#include "ui/luminance_graph.h"
#include "ui/painter.h"
#include "ui/panel_text.h"

namespace varilum {
namespace {

bool isToBeDrawn(const PF_EventExtra& event) noexcept {
  return (event.evt_in_flags & PF_EI_DONT_DRAW) == 0 && event.effect_win.area == PF_EA_CONTROL;
}

// The arrays that a panel is drawn from, locked together.
class PanelLocks {
 public:
  PanelLocks(const PF_InData& in, const SequenceState& state) noexcept
      : levels_(in, state),
        records_(in, arrayHandles(state)[0]),
        // A layer without frames has no arrays, and none is missing.
        complete_(state.frameCount < 1 ||
                  (levels_ && records_ &&
                   levels_.inputLuminance().size() == static_cast<std::size_t>(state.frameCount))) {
  }

  explicit operator bool() const noexcept { return complete_; }
  const LevelLocks& levels() const noexcept { return levels_; }

 private:
  LevelLocks levels_;
  Locked<FrameStats> records_;
  bool complete_;
};

const char* histogramTitle(const GlobalState* global, const SequenceState& state) noexcept {
  const bool fromInput =
      global != nullptr && global->isAfterEffects == 0 && state.histogramSource != 0;
  return lookupString(fromInput ? kTextHistogramGraphInput : kTextHistogramGraph);
}

void drawState(Painter& painter, const GlobalState* global, PF_InData& in, PF_OutData& out,
               PF_ParamDef** params, PF_EffectWorld* output, PF_EventExtra& event,
               SequenceState& state) {
  const PanelLocks locks{in, state};
  if (!locks) return;
  const float fontSize = painter.defaultFontSize();
  DRAWBOT_ColorRGBA background{};
  if (!painter.failed()) painter.note(backgroundColor(in, out, background));
  const Font font{painter, fontSize};
  if (painter.failed()) return;

  const CurrentFrame frame = currentFrame(in.current_time, in.time_step, state.frameCount);
  bringFrameToHand(global, in, out, params, output, event, state, locks.levels(), frame);
  const PanelLayout layout = layOutPanel(event.effect_win.current_frame, fontSize);
  state.panelRect = keptPanelRect(layout);
  state.plotRect = keptPlotRect(layout);

  const PanelData data{in, params, state, locks.levels(), frame};
  painter.paintRect(background, layout.panel);
  drawHistogramGraph(painter, font, layout, histogramTitle(global, state), data);
  drawLuminanceGraph(painter, font, layout, data);
}

}  // namespace

std::int32_t drawPanels(const GlobalState* global, PF_InData& in, PF_OutData& out,
                        PF_ParamDef** params, PF_EffectWorld* output, PF_EventExtra& event,
                        SequenceState* state) {
  event.evt_out_flags = 0;
  HeldDrawbotSuites held{in, out};
  if (held.error() != 0) return held.error();
  DRAWBOT_DrawRef reference = nullptr;
  std::int32_t error = drawingReference(in, out, event.contextH, reference);
  if (error == 0 && reference != nullptr) {
    Painter painter{held.suites(), reference};
    if (!painter.failed() && state != nullptr && isToBeDrawn(event)) {
      drawState(painter, global, in, out, params, output, event, *state);
    }
    error = painter.error();
  }
  const std::int32_t released = held.release();
  if (error == 0) error = released;
  if (error == 0) event.evt_out_flags = PF_EO_HANDLED_EVENT;
  return error;
}

}  // namespace varilum
