// host/command.h — one command on its way to the effect and back.
#pragma once

#include <atomic>
#include <cstdint>
#include <exception>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "host/parameter_store.h"
#include "hostapi/command_data.h"
#include "hostapi/commands.h"

namespace host {

class EffectState;
class PanelState;
class SequenceCopy;
class SmartFrame;
struct LayerFrame;

// What the effect checked out during a command and has to check in.
struct Checkout {
  std::int32_t token = 0;  // also written into the record
  PF_ParamDef* record = nullptr;
  Value value;                        // keeps arbitrary data alive
  std::unique_ptr<LayerFrame> frame;  // of layers
};

class Command;
Command* commandOf(PF_ProgPtr ref, const char* callback) noexcept;

// The records of a command, and what happened while it ran. A command that goes to no sequence copy
// (copy null) offers no check-outs. Nested commands (an arbitrary value needed by a check-out) are
// commands of their own, on the same thread.
class Command {
 public:
  Command(EffectState& effect, SequenceCopy* copy, std::int32_t command);
  ~Command();
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;

  // Fills the parameter array with the values at the command's time. Index 0 gets layer, or a
  // zeroed world.
  void giveParams(const PF_EffectWorld* layer = nullptr);
  void setTime(std::int32_t time) noexcept { in.current_time = time; }

  // Points are told in pixels of the command's resolution.
  void scalePoint(PF_ParamDef& record) const noexcept;

  // Calls the effect. Afterwards its handles are unlocked as before, what it left checked out is
  // reported and taken back, its message shown unless quiet, changed handles taken where that is
  // allowed. Gives the effect's result; an exception that left it counts as 512.
  std::int32_t send(void* extra = nullptr, PF_LayerDef* output = nullptr);

  // The failure of the frame source or listener that a callback met, if one did.
  void rethrowFailure() const;
  // Throws that failure, Cancelled or CommandError unless result is 0. what: "render frame 3".
  void require(std::int32_t result, const std::string& what) const;

  // [any thread that may call back] Callbacks keep an exception here; gives the error to answer.
  std::int32_t keepFailure() noexcept;

  // The effect locked (by 1) or unlocked (by -1) a handle.
  void noteLock(void** handle, std::int32_t by) noexcept;

  EffectState& effect;
  SequenceCopy* const copy;
  const std::int32_t command;
  const std::thread::id thread = std::this_thread::get_id();
  PF_InData in{};
  PF_OutData out{};
  std::vector<PF_ParamDef> params;  // empty when none are given

  bool quiet = false;                  // the message is not shown
  std::atomic<bool> cancelled{false};  // the user said stop
  SmartFrame* smart = nullptr;         // during the smart pair
  PanelState* panel = nullptr;         // during events
  std::vector<int> suites;             // acquired here and not released

  std::mutex mutex;  // of what callbacks from another thread reach
  std::vector<Checkout> checkouts;

 private:
  friend Command* commandOf(PF_ProgPtr ref, const char* callback) noexcept;

  // A handle that the host keeps locked while the effect runs.
  struct Held {
    void** handle = nullptr;
    std::uint64_t serial = 0;
    std::atomic<std::int32_t> balance{0};  // of the effect's own locks
  };
  static void hold(Held& held, void** handle) noexcept;
  void letGo(Held& held, const char* what);
  void takeSequenceData(std::int32_t result);
  void takeBack();
  void showMessage();

  std::vector<Value> values_;  // arbitrary values lent to params
  std::vector<PF_ParamDef*> pointers_;
  std::exception_ptr failure_;
  Held global_;
  Held sequence_;
  PF_ProgPtr ref_;
  Command* outer_ = nullptr;
};

// The command that this thread is in the middle of, or null.
Command* currentCommand() noexcept;

// The command that a callback belongs to: the innermost one of this thread with this effect_ref. In
// the Premiere role another thread may call while the command is under way. Otherwise null, and
// reported under the callback's name.
Command* commandOf(PF_ProgPtr ref, const char* callback) noexcept;

// A value for effect_ref: never null, never used again.
PF_ProgPtr newEffectRef() noexcept;

}  // namespace host
