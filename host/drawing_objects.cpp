// host/drawing_objects.cpp — pens, brushes, fonts and paths that effects hold.
#include "host/drawing_objects.h"

#include <atomic>
#include <map>
#include <mutex>
#include <utility>

#include "host/host_state.h"

namespace host {
namespace {

struct Kept {
  HostState* owner = nullptr;
  DrawingObject object;
};

struct ObjectTable {
  std::mutex mutex;
  std::map<DrawingName, Kept> objects;
};

ObjectTable& objectTable() {
  static ObjectTable* const instance = new ObjectTable;
  return *instance;
}

}  // namespace

DrawingName newDrawingName() noexcept {
  static std::atomic<DrawingName> last{0xD2A3000};
  return last.fetch_add(16) + 16;
}

DrawingName keepDrawingObject(HostState& owner, DrawingObject object) {
  const DrawingName name = newDrawingName();
  ObjectTable& all = objectTable();
  const std::lock_guard guard(all.mutex);
  all.objects.emplace(name, Kept{&owner, std::move(object)});
  owner.accounts.drawingObjects.fetch_add(1);
  return name;
}

DrawingObject* findDrawingObject(DrawingName name, DrawingObjectKind kind) noexcept {
  ObjectTable& all = objectTable();
  const std::lock_guard guard(all.mutex);
  const auto found = all.objects.find(name);
  if (found == all.objects.end() || found->second.object.kind != kind) return nullptr;
  return &found->second.object;
}

bool retainDrawingObject(DrawingName name) noexcept {
  ObjectTable& all = objectTable();
  const std::lock_guard guard(all.mutex);
  const auto found = all.objects.find(name);
  if (found == all.objects.end()) return false;
  ++found->second.object.references;
  return true;
}

bool releaseDrawingObject(DrawingName name) noexcept {
  ObjectTable& all = objectTable();
  const std::lock_guard guard(all.mutex);
  const auto found = all.objects.find(name);
  if (found == all.objects.end()) return false;
  if (--found->second.object.references > 0) return true;
  found->second.owner->accounts.drawingObjects.fetch_sub(1);
  all.objects.erase(found);
  return true;
}

void abandonDrawingObjects(const HostState& owner) noexcept {
  ObjectTable& all = objectTable();
  const std::lock_guard guard(all.mutex);
  std::erase_if(all.objects, [&](const auto& entry) { return entry.second.owner == &owner; });
}

}  // namespace host
