// host/host.cpp — the application that effects run in.
#include "host/host.h"

#include <array>
#include <utility>

#include "host/aegp_memory.h"
#include "host/effect_worlds.h"
#include "host/handles.h"
#include "host/host_state.h"

namespace host {

Stress Stress::strict() noexcept {
  Stress stress;
  stress.moveHandles = true;
  stress.poisonMemory = true;
  stress.rowPadding = 7 * 16;  // an odd number of pixels at every depth
  stress.originX = 3;
  stress.originY = 5;
  stress.shuffleRows = true;
  stress.withoutParams = true;
  stress.bottomUp = true;
  stress.tiles = 3;
  return stress;
}

Host::Host(Role role, ApiVersion version, HostOptions options)
    : state_(std::make_unique<HostState>(role, version, std::move(options))) {}

Host::~Host() = default;

Role Host::role() const noexcept {
  return state_->role;
}
ApiVersion Host::version() const noexcept {
  return state_->version;
}
const HostOptions& Host::options() const noexcept {
  return state_->options;
}
void Host::setListener(Listener* listener) noexcept {
  state_->listener.store(listener);
}
Faults& Host::faults() noexcept {
  return state_->faults;
}

std::vector<std::string> Host::missingSuites() const {
  return state_->suites.misses();
}

Outstanding Host::outstanding() const {
  const HandleCount held = countHandles(*state_);
  const Accounts& accounts = state_->accounts;
  Outstanding open;
  open.handles = held.handles;
  open.locks = held.locks;
  open.paramCheckouts = accounts.paramCheckouts.load();
  open.layerCheckouts = accounts.layerCheckouts.load();
  open.suites = state_->suites.total();
  open.aegpHandles = countAegpMemory(*state_);
  open.worlds = countEffectWorlds(*state_);
  open.progressDialogs = accounts.progressDialogs.load();
  open.preRenders = accounts.preRenders.load();
  open.drawingObjects = accounts.drawingObjects.load();
  open.renderReferences = accounts.renderReferences.load();
  return open;
}

std::string Outstanding::describe() const {
  struct Line {
    std::int64_t count;
    const char* noun;
  };
  const std::array<Line, 11> lines{{{handles, "handle"},
                                    {locks, "lock"},
                                    {paramCheckouts, "parameter check-out"},
                                    {layerCheckouts, "layer check-out"},
                                    {suites, "suite reference"},
                                    {aegpHandles, "application handle"},
                                    {worlds, "world"},
                                    {progressDialogs, "progress dialog"},
                                    {preRenders, "pre-render"},
                                    {drawingObjects, "drawing object"},
                                    {renderReferences, "render reference"}}};
  std::string text;
  for (const Line& line : lines) {
    if (line.count == 0) continue;
    if (!text.empty()) text += ", ";
    text += std::to_string(line.count) + " " + line.noun + (line.count == 1 ? "" : "s");
  }
  return text.empty() ? "nothing" : text;
}

}  // namespace host
