// host/host_state.cpp — the inside of a host: everything that its callbacks need to reach.
#include "host/host_state.h"

#include <algorithm>
#include <mutex>
#include <utility>
#include <vector>

#include "host/aegp_memory.h"
#include "host/drawing_objects.h"
#include "host/effect_worlds.h"
#include "host/handles.h"

namespace host {
namespace {

thread_local HostState* threadHost = nullptr;

struct Living {
  std::mutex mutex;
  std::vector<HostState*> hosts;
};

Living& living() {
  static Living* const instance = new Living;
  return *instance;
}

}  // namespace

HostState::HostState(Role itsRole, ApiVersion itsVersion, HostOptions itsOptions)
    : role(itsRole),
      version(itsVersion),
      options(std::move(itsOptions)),
      pool(*this, options.threads) {
  Living& all = living();
  const std::lock_guard guard(all.mutex);
  all.hosts.push_back(this);
}

HostState::~HostState() {
  {
    Living& all = living();
    const std::lock_guard guard(all.mutex);
    std::erase(all.hosts, this);
  }
  abandonHandles(*this);
  abandonAegpMemory(*this);
  abandonEffectWorlds(*this);
  abandonDrawingObjects(*this);
}

void HostState::report(std::string_view text) noexcept {
  try {
    show(MessageKind::protocol, "host", text);
  } catch (...) {
    // A listener that fails on a report cannot be told of its failure.
    return;
  }
}

void HostState::show(MessageKind kind, std::string_view caption, std::string_view text) {
  if (Listener* told = listener.load()) told->message(kind, caption, text);
}

HostState* currentHost() noexcept {
  if (threadHost != nullptr) return threadHost;
  Living& all = living();
  const std::lock_guard guard(all.mutex);
  return all.hosts.empty() ? nullptr : all.hosts.back();
}

HostScope::HostScope(HostState& host) noexcept : outer_(std::exchange(threadHost, &host)) {}

HostScope::~HostScope() {
  threadHost = outer_;
}

}  // namespace host
