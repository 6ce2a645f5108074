// host/host_state.h — the inside of a host: everything that its callbacks need to reach.
#pragma once

#include <atomic>
#include <cstdint>
#include <string_view>

#include "host/faults.h"
#include "host/host.h"
#include "host/iterate_pool.h"
#include "host/suite_registry.h"

namespace host {

// Counts of what has no registry of its own.
struct Accounts {
  std::atomic<std::int64_t> paramCheckouts{0};
  std::atomic<std::int64_t> layerCheckouts{0};
  std::atomic<std::int64_t> progressDialogs{0};
  std::atomic<std::int64_t> preRenders{0};
  std::atomic<std::int64_t> drawingObjects{0};
  std::atomic<std::int64_t> renderReferences{0};
};

class HostState {
 public:
  HostState(Role role, ApiVersion version, HostOptions options);
  ~HostState();
  HostState(const HostState&) = delete;
  HostState& operator=(const HostState&) = delete;

  const Role role;
  const ApiVersion version;
  const HostOptions options;
  std::atomic<Listener*> listener{nullptr};
  Faults faults;
  Accounts accounts;
  SuiteLedger suites;
  std::atomic<std::int32_t> pluginIds{0};
  IteratePool pool;

  // A broken rule, told to the listener. Never throws.
  void report(std::string_view text) noexcept;
  // Throws what the listener throws.
  void show(MessageKind kind, std::string_view caption, std::string_view text);
};

// Callbacks of the interface carry no reference to their host. Commands and pool threads make
// theirs known with a scope; other threads are taken to belong to the host made last. Null without
// hosts.
HostState* currentHost() noexcept;

class HostScope {
 public:
  explicit HostScope(HostState& host) noexcept;
  ~HostScope();
  HostScope(const HostScope&) = delete;
  HostScope& operator=(const HostScope&) = delete;

 private:
  HostState* outer_;
};

}  // namespace host
