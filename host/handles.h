// host/handles.h — the relocatable memory that host and effect share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace host {

class HostState;

// A handle is the address of a block's data pointer. Locks nest; under Stress.moveHandles the data
// moves when the last lock goes. One table for the whole process. [any thread]

// Null when memory is short. Contents are not zeroed. Data is aligned to 16 bytes.
void** createHandle(HostState& owner, std::uint64_t bytes) noexcept;
// A handle with these contents; throws std::bad_alloc.
void** createHandle(HostState& owner, std::span<const std::byte> contents);

// Null for null and for what is no live handle; the latter is reported.
void* lockHandle(void** handle) noexcept;
void unlockHandle(void** handle) noexcept;
void disposeHandle(void** handle) noexcept;
std::uint64_t handleSize(void** handle) noexcept;
// Keeps the contents up to the smaller size. False when memory is short; then nothing changed.
bool resizeHandle(void**& handle, std::uint64_t bytes) noexcept;

bool isLiveHandle(void** handle) noexcept;
// The host that the handle was made for; null for what is no live handle.
HostState* handleOwner(void** handle) noexcept;

std::uint32_t handleLocks(void** handle) noexcept;
// Changes the lock count by hand, never below 0.
void adjustLocks(void** handle, std::int32_t by) noexcept;
// Tells a handle from a later one at the same address; 0 for what is no live handle.
std::uint64_t handleSerial(void** handle) noexcept;

// What the effect gave the host to keep for the effect's whole life is not counted as outstanding.
void markKept(void** handle) noexcept;

struct HandleCount {
  std::int64_t handles = 0;
  std::int64_t locks = 0;
};
HandleCount countHandles(const HostState& owner);
// At the end of a host: frees what nobody disposed of.
void abandonHandles(const HostState& owner) noexcept;

// A copy of a handle's bytes.
std::vector<std::byte> handleContents(void** handle);

}  // namespace host
