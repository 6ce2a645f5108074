// host/panel_frames.h — frames that a panel has the host render in the background.
#pragma once

#include <cstdint>
#include <map>
#include <memory>

#include "host/drawing_objects.h"
#include "host/layer_frame.h"
#include "host/panel.h"
#include "host/parameter_store.h"

namespace host {

class Command;

// References to the effect, render options and receipts of one panel, and its render manager. All
// are counted; addresses that nothing lives at stand for them.
class PanelFrames {
 public:
  using Name = DrawingName;

  PanelFrames(HostState& host, AsyncDelay delay) : host_(host), delay_(delay) {}

  Name manager() const noexcept { return manager_; }

  Name newEffect();
  bool hasEffect(Name name) const { return effects_.contains(name); }
  bool disposeEffect(Name name);

  Name newOptions(Moment moment);
  const Moment* options(Name name) const;
  bool disposeOptions(Name name);

  // A receipt; 0 while there is none to be had. Throws what the frame source throws.
  Name request(Command& command, std::uint32_t purpose, const Moment& moment);
  bool hasReceipt(Name name) const { return receipts_.contains(name); }
  // The receipt's world; 0 without pixels.
  Name worldOf(Name receipt) const;
  bool checkIn(Command& command, Name receipt);
  // The pixels of a world of some receipt, or null.
  const PF_EffectWorld* world(Name name) const;

  // A draw begins: background work has got on.
  void advance() noexcept;
  // A frame asked for that some later draw will find ready.
  bool pending() const noexcept;
  // A frame asked for and not ready.
  bool unready() const noexcept;
  std::int64_t outstanding() const noexcept;

 private:
  struct Request {
    Moment moment;
    std::int32_t drawsLeft = 0;
  };
  struct Receipt {
    std::unique_ptr<LayerFrame> frame;
    Name world = 0;
  };
  void count(std::int64_t by) noexcept;

  HostState& host_;
  const AsyncDelay delay_;
  const Name manager_ = newDrawingName();
  std::map<Name, bool> effects_;
  std::map<Name, Moment> options_;
  std::map<Name, Receipt> receipts_;
  std::map<std::uint32_t, Request> requests_;  // by purpose
};

}  // namespace host
