// stats/live_registry.h — which sequence handles of this process are our own, alive.
//
// A saved file can imitate the header of a live instance, handles and all. So whether handles in a
// header may be followed is not told by its contents but by this table. It also remembers the
// arrays that a flattened instance left allocated, until its image comes back or goes. The only
// mutable state that the process shares between instances; guarded by a mutex, since hosts restore
// and dispose instances on more than one thread. [any thread]
#pragma once

#include <array>
#include <cstddef>

#include "hostapi/command_data.h"

namespace varilum {

inline constexpr std::size_t kArraysOfInstance = 6;
using ArrayHandles = std::array<void**, kArraysOfInstance>;  // null = none

// The handle holds the header of a live instance from now on. Throws std::bad_alloc.
void registerLive(const PF_InData& in, void** header);
void forgetLive(void** header) noexcept;
bool isLive(void** header) noexcept;

// Arrays to dispose when the image comes back or goes. Those kept before under the same handle
// value, which the host has given out again, are disposed now. Throws std::bad_alloc.
void keepArraysOfImage(const PF_InData& in, void** image, const ArrayHandles& arrays);

// Disposes what was kept for this image.
void disposeArraysOfImage(const PF_InData& in, void** image) noexcept;

// The host unloads the effect: disposes everything kept for it, and forgets its live instances.
// Other hosts in the process, told apart by their global data, keep theirs.
void releaseRegistry(const PF_InData& in) noexcept;

}  // namespace varilum
