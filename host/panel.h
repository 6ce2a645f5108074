// host/panel.h — the effect's own panel among the effect controls: drawing it, and the mouse in it.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "host/drawing_record.h"
#include "host/instance.h"

namespace host {

// Logical pixels in the controls' coordinate system. Right and bottom exclusive.
struct PanelRect {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;

  friend bool operator==(const PanelRect&, const PanelRect&) = default;
};

// When a frame that the panel asks the host to render in the background is ready.
struct AsyncDelay {
  static constexpr std::int32_t kNever = -1;
  std::int32_t draws = 1;     // at the n-th draw after the one that asked; 0: at once
  bool emptyReceipt = false;  // until then: a receipt without pixels instead of no receipt
};

struct PanelOptions {
  std::int32_t width = 0;   // of the control; 0: as the parameter asks
  std::int32_t height = 0;  // likewise
  std::int32_t left = 0;    // where the control begins; panels scroll
  std::int32_t top = 0;
  float fontSize = 12.0F;
  std::uint16_t background[3] = {0x2424, 0x2424, 0x2424};
  AsyncDelay async;
};

// What came of a mouse or key event.
struct EventOutcome {
  bool handled = false;
  bool wantsDrags = false;            // after a click: drags may follow
  std::vector<std::int32_t> changed;  // parameters, by index, whose values were taken over
};

struct Mouse {
  std::int32_t x = 0;  // the controls' coordinates, as PanelRect
  std::int32_t y = 0;
  std::int32_t clicks = 1;
  std::int32_t modifiers = 0;  // PF_Mod_*
};

enum class PanelArea : std::uint8_t { title, control };

class PanelState;

// The panel of an instance, open from construction (NEW_CONTEXT, ACTIVATE) to close() or the end
// (DEACTIVATE, CLOSE_CONTEXT). Events happen at the instance's time cursor. On the instance's
// thread; the instance outlives it and is not moved to other state. Throws CommandError, Error when
// the effect has no panel.
class Panel {
 public:
  explicit Panel(Instance& instance, PanelOptions options = {});
  ~Panel();
  Panel(Panel&&) noexcept;

  // One DRAW. The same record is then shown().
  const DrawingRecord& draw(PanelArea area = PanelArea::control, bool dontDraw = false);
  // Draws, and again while a frame is on its way that draws bring nearer.
  const DrawingRecord& drawUntilReady();
  // What was drawn last without an error.
  const DrawingRecord& shown() const noexcept;
  // Whether a frame asked for is not there yet.
  bool waiting() const noexcept;

  // Press of the button; with released, it is up again by now (last_time is set). After a handled
  // event the panel is drawn anew.
  EventOutcome click(const Mouse& mouse, bool released = false);
  // Only while the effect asked for drags. release() ends them; without any it does nothing.
  EventOutcome drag(const Mouse& mouse);
  EventOutcome release(const Mouse& mouse);
  bool dragging() const noexcept;

  EventOutcome adjustCursor(const Mouse& mouse);
  EventOutcome key(std::uint32_t code, std::int32_t modifiers = 0);
  void idle();

  // Scrolls the panel: the control now begins here.
  void moveTo(std::int32_t left, std::int32_t top);
  // The time cursor of the composition, which may stand outside the layer; the instance's own stays
  // where it is.
  void placeCursor(std::int32_t frame);
  void followInstance();

  PanelRect control() const noexcept;
  const PanelOptions& options() const noexcept;
  std::int32_t parameter() const noexcept;  // index of the parameter that the panel stands under

  // Throws when the effect answers with an error; the panel is closed all the same.
  void close();

 private:
  std::unique_ptr<PanelState> state_;
};

}  // namespace host
