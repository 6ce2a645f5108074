// host/aegp_memory.h — the memory that scripts and other application services return.
#pragma once

#include <cstdint>
#include <string_view>

#include "hostapi/scalars.h"

namespace host {

class HostState;

// Opaque handles, of another kind than those of host/handles.h. Locks nest. [any thread]
// Results are 0, 3 (no such handle) or 4 (memory is short).
std::int32_t createAegpMemory(HostState& owner, std::uint32_t bytes, bool clear,
                              AEGP_MemHandle* handle) noexcept;
// Holds text and a NUL.
std::int32_t createAegpText(HostState& owner, std::string_view text,
                            AEGP_MemHandle* handle) noexcept;
std::int32_t freeAegpMemory(AEGP_MemHandle handle) noexcept;
std::int32_t lockAegpMemory(AEGP_MemHandle handle, void** address) noexcept;
std::int32_t unlockAegpMemory(AEGP_MemHandle handle) noexcept;
std::int32_t aegpMemorySize(AEGP_MemHandle handle, std::uint32_t* bytes) noexcept;
std::int32_t resizeAegpMemory(AEGP_MemHandle handle, std::uint32_t bytes) noexcept;

std::int64_t countAegpMemory(const HostState& owner);
void abandonAegpMemory(const HostState& owner) noexcept;

}  // namespace host
