// host/handle_callbacks.h — handles as effects ask for them, refusals included.
#pragma once

#include <cstdint>

namespace host {

// One set serves the utility callbacks and the handle suite. [any thread]
void** effectNewHandle(std::uint64_t bytes);
void* effectLockHandle(void** handle);
void effectUnlockHandle(void** handle);
void effectDisposeHandle(void** handle);
std::uint64_t effectHandleSize(void** handle);
std::int32_t effectResizeHandle(std::uint64_t bytes, void*** handle);

}  // namespace host
