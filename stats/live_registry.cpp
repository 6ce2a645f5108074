// stats/live_registry.cpp — which sequence handles of this process are our own, alive.
#include "stats/live_registry.h"

#include <iterator>
#include <map>
#include <mutex>
#include <utility>

namespace varilum {
namespace {

struct KeptArrays {
  void** host;  // its global data
  ArrayHandles handles;
};

struct Registry {
  std::mutex mutex;
  std::map<void**, void**> live;      // header, and its host's global data
  std::map<void**, KeptArrays> kept;  // by image
};

Registry& registry() noexcept {
  static Registry instance;
  return instance;
}

void disposeAll(const PF_InData& in, const ArrayHandles& arrays) noexcept {
  for (void** handle : arrays) {
    if (handle != nullptr) in.utils->host_dispose_handle(handle);
  }
}

}  // namespace

void registerLive(const PF_InData& in, void** header) {
  Registry& table = registry();
  const std::lock_guard lock{table.mutex};
  table.live[header] = in.global_data;
}

void forgetLive(void** header) noexcept {
  Registry& table = registry();
  const std::lock_guard lock{table.mutex};
  table.live.erase(header);
}

bool isLive(void** header) noexcept {
  Registry& table = registry();
  const std::lock_guard lock{table.mutex};
  return table.live.count(header) != 0;
}

void keepArraysOfImage(const PF_InData& in, void** image, const ArrayHandles& arrays) {
  ArrayHandles stale{};
  {
    Registry& table = registry();
    const std::lock_guard lock{table.mutex};
    KeptArrays& entry = table.kept[image];
    stale = std::exchange(entry, KeptArrays{in.global_data, arrays}).handles;
  }
  disposeAll(in, stale);
}

void disposeArraysOfImage(const PF_InData& in, void** image) noexcept {
  ArrayHandles arrays{};
  {
    Registry& table = registry();
    const std::lock_guard lock{table.mutex};
    const auto entry = table.kept.find(image);
    if (entry == table.kept.end()) return;
    arrays = entry->second.handles;
    table.kept.erase(entry);
  }
  disposeAll(in, arrays);
}

void releaseRegistry(const PF_InData& in) noexcept {
  const auto ofThisHost = [&in](void** host) { return host == in.global_data; };
  std::map<void**, KeptArrays> released;
  {
    Registry& table = registry();
    const std::lock_guard lock{table.mutex};
    std::erase_if(table.live, [&](const auto& entry) { return ofThisHost(entry.second); });
    // Moving nodes allocates nothing.
    for (auto entry = table.kept.begin(); entry != table.kept.end();) {
      const auto next = std::next(entry);
      if (ofThisHost(entry->second.host)) released.insert(table.kept.extract(entry));
      entry = next;
    }
  }
  for (const auto& [image, arrays] : released) disposeAll(in, arrays.handles);
}

}  // namespace varilum
