// host/host.h — the application that effects run in: its identity, memory, suites and threads.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/faults.h"
#include "host/frame_view.h"
#include "host/listener.h"

namespace host {

enum class Role { afterEffects, premiere, other };

// Version of the effect interface that the host speaks.
struct ApiVersion {
  std::int16_t major = 13;
  std::int16_t minor = 14;
};

// How unfriendly the host is. Everything off: a friendly host.
struct Stress {
  bool moveHandles = false;     // data moves on every final unlock; old bytes are poisoned
  bool poisonMemory = false;    // new handles hold 0xCD, new images too
  std::int32_t rowPadding = 0;  // bytes at the end of each row, different for input and output
  std::int32_t originX = 0;     // position of the layer in its buffers (room around it is filled
  std::int32_t originY = 0;     //   with a pattern that must survive)
  bool shuffleRows = false;     // iteration visits rows in random order
  bool withoutParams = false;   // params is null wherever the interface allows it
  bool bottomUp = false;        // worlds begin with their last row: row bytes are negative
  std::int32_t tiles = 1;       // smart renders come in tiles x tiles requests, put together
  Downsample downsample{};      // renders are at 1/x, 1/y of the size that is analysed
  std::int32_t timeOffset =
      0;  // renders are for this time after their frame's, in the layer's units
  bool callerThreadOnly = false;  // in the Premiere role too, only the thread called may call back

  friend bool operator==(const Stress&, const Stress&) = default;

  // All that one real host might do at once, and that a correct effect's pictures do not show.
  static Stress strict() noexcept;
};

struct HostOptions {
  bool renderEngine = true;  // no user interface: effects keep their message boxes to themselves
  std::int32_t threads = 0;  // of the iteration pool; 0 = one a core
  std::string appVersion = "15.1.2x69";   // answer to the script "app.version;"
  std::uint32_t appInfo[3] = {13, 0, 0};  // Premiere role: major, minor, build
  // Dialogs of the effect's own are told to the listener. False: the effect shows them itself, in
  // windows where the system has them.
  bool showsEffectDialogs = true;
  Stress stress;
};

// What has been handed out and not given back. All zero after an instance and its effect are gone.
struct Outstanding {
  std::int64_t handles = 0;
  std::int64_t locks = 0;
  std::int64_t paramCheckouts = 0;
  std::int64_t layerCheckouts = 0;
  std::int64_t suites = 0;
  std::int64_t aegpHandles = 0;
  std::int64_t worlds = 0;  // that the effect made
  std::int64_t progressDialogs = 0;
  std::int64_t preRenders = 0;
  std::int64_t drawingObjects = 0;
  std::int64_t renderReferences = 0;  // effects, render options and receipts in a panel's hands

  friend bool operator==(const Outstanding&, const Outstanding&) = default;
  bool nothing() const noexcept { return *this == Outstanding{}; }
  std::string describe() const;  // "2 handles, 1 lock", or "nothing"
};

class HostState;  // the inside; see host/host_state.h

// One application. Outlives its effects. All members may be called on any thread.
class Host {
 public:
  explicit Host(Role role, ApiVersion version = {}, HostOptions options = {});
  ~Host();
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  Role role() const noexcept;
  ApiVersion version() const noexcept;
  const HostOptions& options() const noexcept;

  // The listener must outlive its use; null = nobody listens. Default: nobody.
  void setListener(Listener* listener) noexcept;

  Faults& faults() noexcept;
  Outstanding outstanding() const;
  // Suites that effects asked for and this application does not have: "name version", once each.
  std::vector<std::string> missingSuites() const;

  HostState& state() noexcept { return *state_; }

 private:
  std::unique_ptr<HostState> state_;
};

}  // namespace host
