// host/effect_worlds.cpp — images that effects make for themselves.
#include "host/effect_worlds.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <mutex>
#include <new>

#include "host/host_state.h"
#include "host/image.h"
#include "hostapi/commands.h"

namespace host {
namespace {

struct Made {
  const HostState* owner;
  Image image;
};

// By the address of the pixels, which copies of the record share.
struct Worlds {
  std::mutex mutex;
  std::map<const void*, Made> made;
};

Worlds& worlds() {
  static Worlds* const instance = new Worlds;
  return *instance;
}

void fillWith(Image& image, int value) noexcept {
  for (std::int32_t y = 0; y < image.height(); ++y) {
    std::memset(image.row(y), value, static_cast<std::size_t>(image.rowBytes()));
  }
}

std::int32_t make(std::int32_t width, std::int32_t height, Depth depth, bool clear,
                  PF_EffectWorld* world) {
  HostState* host = currentHost();
  if (host == nullptr || world == nullptr || width < 1 || height < 1 ||
      width > PF_MAX_WORLD_WIDTH || height > PF_MAX_WORLD_HEIGHT) {
    if (host != nullptr) host->report("new_world: no such size");
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  if (const std::int32_t error = host->faults.check(CallKind::newHandle)) return error;
  try {
    Image image(width, height, depth);
    if (clear || host->options.stress.poisonMemory) fillWith(image, clear ? 0 : 0xCD);
    const PF_EffectWorld record = image.world(true);
    Worlds& all = worlds();
    const std::lock_guard guard(all.mutex);
    all.made.insert_or_assign(record.data, Made{host, std::move(image)});
    *world = record;
    return PF_Err_NONE;
  } catch (const std::bad_alloc&) {
    return PF_Err_OUT_OF_MEMORY;
  }
}

}  // namespace

std::int32_t newWorld(PF_ProgPtr, std::int32_t width, std::int32_t height, std::int32_t flags,
                      PF_EffectWorld* world) {
  const Depth depth = (flags & PF_NewWorldFlag_DEEP_PIXELS) != 0 ? Depth::bits16 : Depth::bits8;
  return make(width, height, depth, (flags & PF_NewWorldFlag_CLEAR_PIXELS) != 0, world);
}

std::int32_t newWorldOfFormat(PF_ProgPtr, std::int32_t width, std::int32_t height, char clear,
                              std::int32_t format, PF_EffectWorld* world) {
  switch (format) {
    case PF_PixelFormat_ARGB32:
      return make(width, height, Depth::bits8, clear != 0, world);
    case PF_PixelFormat_ARGB64:
      return make(width, height, Depth::bits16, clear != 0, world);
    case PF_PixelFormat_ARGB128:
      return make(width, height, Depth::float32, clear != 0, world);
    default:
      return PF_Err_BAD_CALLBACK_PARAM;
  }
}

std::int32_t disposeWorld(PF_ProgPtr, PF_EffectWorld* world) {
  HostState* host = currentHost();
  if (world == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  Worlds& all = worlds();
  const std::lock_guard guard(all.mutex);
  if (all.made.erase(world->data) == 0) {
    if (host != nullptr) host->report("dispose_world: no world that the effect made");
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  *world = {};
  return PF_Err_NONE;
}

std::int64_t countEffectWorlds(const HostState& host) {
  Worlds& all = worlds();
  const std::lock_guard guard(all.mutex);
  return std::count_if(all.made.begin(), all.made.end(),
                       [&](const auto& entry) { return entry.second.owner == &host; });
}

void abandonEffectWorlds(const HostState& host) noexcept {
  Worlds& all = worlds();
  const std::lock_guard guard(all.mutex);
  std::erase_if(all.made, [&](const auto& entry) { return entry.second.owner == &host; });
}

}  // namespace host
