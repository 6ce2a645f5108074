// host/effect_worlds.h — images that effects make for themselves.
#pragma once

#include <cstdint>

#include "hostapi/scalars.h"
#include "hostapi/world.h"

namespace host {

class HostState;

// [any thread] A world of this size, writable; flags: PF_NewWorldFlag_*. As the utility callback.
std::int32_t newWorld(PF_ProgPtr ref, std::int32_t width, std::int32_t height, std::int32_t flags,
                      PF_EffectWorld* world);
// The same by pixel format, as the world suite has it.
std::int32_t newWorldOfFormat(PF_ProgPtr ref, std::int32_t width, std::int32_t height, char clear,
                              std::int32_t format, PF_EffectWorld* world);
std::int32_t disposeWorld(PF_ProgPtr ref, PF_EffectWorld* world);

// Worlds that effects of this host have not given back.
std::int64_t countEffectWorlds(const HostState& host);
void abandonEffectWorlds(const HostState& host) noexcept;

}  // namespace host
