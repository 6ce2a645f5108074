// host/events.h — events of a panel on their way to the effect and back.
#pragma once

#include <cstdint>

#include "host/panel.h"
#include "hostapi/events.h"

namespace host {

class PanelState;

// The record that names an open panel to the effect; the same handle all its life.
class EventContext {
 public:
  EventContext() noexcept;
  EventContext(const EventContext&) = delete;
  EventContext& operator=(const EventContext&) = delete;

  PF_Context** handle() noexcept { return &pointer_; }

 private:
  PF_Context record_{};
  PF_Context* pointer_ = &record_;
};

// A record of this kind with everything that the host fills in for it; what belongs to the single
// event (points, keys) is left to the caller.
PF_EventExtra makeEvent(PanelState& panel, std::int32_t type,
                        PanelArea area = PanelArea::control) noexcept;

// Sends it. Values that the effect marked changed are taken over where the interface allows that;
// rules it broke are reported. Throws CommandError, Cancelled, what a frame source threw.
EventOutcome sendEvent(PanelState& panel, PF_EventExtra& extra);

}  // namespace host
