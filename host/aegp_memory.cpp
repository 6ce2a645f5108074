// host/aegp_memory.cpp — the memory that scripts and other application services return.
#include "host/aegp_memory.h"

#include <cstddef>
#include <cstring>
#include <map>
#include <mutex>
#include <new>
#include <vector>

#include "host/aegp_result.h"
#include "host/host_state.h"

namespace host {
namespace {

struct Block {
  HostState* owner = nullptr;
  std::vector<std::byte> data;
  std::uint32_t locks = 0;
};

struct MemoryTable {
  std::mutex mutex;
  std::map<std::uintptr_t, Block> blocks;
  std::uintptr_t last = 0xAE000000;
};

MemoryTable& memoryTable() {
  static MemoryTable* const instance = new MemoryTable;
  return *instance;
}

// The value of a handle is a number, not an address: dereferencing one without a lock must fail.
std::uintptr_t numberOf(AEGP_MemHandle handle) noexcept {
  return reinterpret_cast<std::uintptr_t>(handle);
}

template <typename What>
std::int32_t withBlock(AEGP_MemHandle handle, What what) noexcept {
  {
    MemoryTable& all = memoryTable();
    const std::lock_guard guard(all.mutex);
    const auto found = all.blocks.find(numberOf(handle));
    if (found != all.blocks.end()) {
      try {
        return what(found->second);
      } catch (const std::bad_alloc&) {
        return kAegpErrorMemory;
      }
    }
  }
  if (HostState* host = currentHost()) host->report("AEGP Memory Suite: no live handle");
  return kAegpErrorParameter;
}

}  // namespace

std::int32_t createAegpMemory(HostState& owner, std::uint32_t bytes, bool clear,
                              AEGP_MemHandle* handle) noexcept {
  if (handle == nullptr) return kAegpErrorParameter;
  *handle = nullptr;
  try {
    Block block{&owner, std::vector<std::byte>(bytes), 0};
    if (!clear && owner.options.stress.poisonMemory && bytes > 0) {
      std::memset(block.data.data(), 0xCD, bytes);
    }
    MemoryTable& all = memoryTable();
    const std::lock_guard guard(all.mutex);
    const std::uintptr_t number = all.last += 16;
    all.blocks.emplace(number, std::move(block));
    *handle = reinterpret_cast<AEGP_MemHandle>(number);
    return 0;
  } catch (const std::bad_alloc&) {
    return kAegpErrorMemory;
  }
}

std::int32_t createAegpText(HostState& owner, std::string_view text,
                            AEGP_MemHandle* handle) noexcept {
  const auto bytes = static_cast<std::uint32_t>(text.size() + 1);
  const std::int32_t result = createAegpMemory(owner, bytes, true, handle);
  if (result != 0) return result;
  return withBlock(*handle, [&](Block& block) {
    std::memcpy(block.data.data(), text.data(), text.size());
    return 0;
  });
}

std::int32_t freeAegpMemory(AEGP_MemHandle handle) noexcept {
  std::int32_t result = withBlock(handle, [](Block&) { return 0; });
  if (result != 0) return result;
  MemoryTable& all = memoryTable();
  const std::lock_guard guard(all.mutex);
  all.blocks.erase(numberOf(handle));
  return 0;
}

std::int32_t lockAegpMemory(AEGP_MemHandle handle, void** address) noexcept {
  return withBlock(handle, [&](Block& block) {
    ++block.locks;
    *address = block.data.data();
    return 0;
  });
}

std::int32_t unlockAegpMemory(AEGP_MemHandle handle) noexcept {
  return withBlock(handle, [](Block& block) {
    if (block.locks == 0) return kAegpErrorParameter;
    --block.locks;
    return 0;
  });
}

std::int32_t aegpMemorySize(AEGP_MemHandle handle, std::uint32_t* bytes) noexcept {
  return withBlock(handle, [&](Block& block) {
    *bytes = static_cast<std::uint32_t>(block.data.size());
    return 0;
  });
}

std::int32_t resizeAegpMemory(AEGP_MemHandle handle, std::uint32_t bytes) noexcept {
  return withBlock(handle, [&](Block& block) {
    if (block.locks != 0) return kAegpErrorParameter;
    block.data.resize(bytes);
    return 0;
  });
}

std::int64_t countAegpMemory(const HostState& owner) {
  std::int64_t count = 0;
  MemoryTable& all = memoryTable();
  const std::lock_guard guard(all.mutex);
  for (const auto& [number, block] : all.blocks) count += block.owner == &owner ? 1 : 0;
  return count;
}

void abandonAegpMemory(const HostState& owner) noexcept {
  MemoryTable& all = memoryTable();
  const std::lock_guard guard(all.mutex);
  std::erase_if(all.blocks, [&](const auto& entry) { return entry.second.owner == &owner; });
}

}  // namespace host
