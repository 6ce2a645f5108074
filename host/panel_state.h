// host/panel_state.h — the inside of a panel: its context, and what a draw leaves in it.
#pragma once

#include <cstdint>
#include <optional>

#include "host/drawing_objects.h"
#include "host/events.h"
#include "host/instance_state.h"
#include "host/panel.h"
#include "host/panel_frames.h"

namespace host {

class PanelState {
 public:
  // Throws Error when the effect has no panel.
  PanelState(InstanceState& instance, PanelOptions options);
  PanelState(const PanelState&) = delete;
  PanelState& operator=(const PanelState&) = delete;

  std::int32_t time() const noexcept;

  InstanceState& instance;
  PanelOptions options;
  const std::int32_t parameter;
  EventContext context;
  PanelFrames frames;
  std::optional<std::int32_t> cursor;  // frame; without: the instance's

  // During a DRAW; else 0.
  DrawingName drawing = 0;
  DrawingName supplier = 0;
  DrawingName surface = 0;
  DrawingRecord record;  // under way
  DrawingRecord shown;

  // From a click to its last drag: what the effect keeps in the event record.
  std::optional<PF_DoClickEventInfo> mouse;
  bool open = false;
};

// The panel whose event this thread is in the middle of, or null.
PanelState* currentPanel() noexcept;

}  // namespace host
