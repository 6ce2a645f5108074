// host/handles.cpp — the relocatable memory that host and effect share.
#include "host/handles.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <new>
#include <unordered_map>

#include "host/host_state.h"

namespace host {
namespace {

constexpr std::align_val_t kHandleAlignment{16};
constexpr int kFresh = 0xCD;
constexpr int kGone = 0xDD;

// The handle is the address of data, which therefore comes first.
struct Block {
  void* data = nullptr;
  std::uint64_t bytes = 0;
  std::uint32_t locks = 0;
  bool kept = false;
  HostState* owner = nullptr;
  std::uint64_t serial = 0;
};

struct HandleTable {
  std::mutex mutex;
  std::unordered_map<void**, Block*> blocks;
  std::uint64_t serials = 0;
};

// Never destroyed: effects may dispose of handles while the process ends.
HandleTable& handleTable() {
  static HandleTable* const instance = new HandleTable;
  return *instance;
}

void* allocate(std::uint64_t bytes) noexcept {
  if (bytes > static_cast<std::uint64_t>(PTRDIFF_MAX)) return nullptr;
  return ::operator new(static_cast<std::size_t>(bytes == 0 ? 1 : bytes), kHandleAlignment,
                        std::nothrow);
}

void release(Block& block) noexcept {
  if (block.owner->options.stress.poisonMemory) std::memset(block.data, kGone, block.bytes);
  ::operator delete(block.data, kHandleAlignment);
}

bool moveTo(Block& block, std::uint64_t bytes) noexcept {
  void* fresh = allocate(bytes);
  if (fresh == nullptr) return false;
  const auto common = std::min(block.bytes, bytes);
  std::memcpy(fresh, block.data, common);
  if (block.owner->options.stress.poisonMemory && bytes > common) {
    std::memset(static_cast<std::byte*>(fresh) + common, kFresh, bytes - common);
  }
  release(block);
  block.data = fresh;
  block.bytes = bytes;
  return true;
}

// What happens to data that nothing holds any more.
void settle(Block& block) noexcept {
  if (block.locks != 0 || !block.owner->options.stress.moveHandles) return;
  std::byte* const old = static_cast<std::byte*>(block.data);
  void* fresh = allocate(block.bytes);
  if (fresh == nullptr) return;
  std::memcpy(fresh, old, block.bytes);
  std::memset(old, kGone, block.bytes);
  ::operator delete(old, kHandleAlignment);
  block.data = fresh;
}

void complain(const char* what, void** handle) noexcept {
  if (HostState* host = currentHost()) {
    char text[96];
    std::snprintf(text, sizeof text, "%s: %p is no live handle", what, static_cast<void*>(handle));
    host->report(text);
  }
}

// Runs what on the live block; otherwise complains and gives fallback. Null handles are let pass in
// silence: effects dispose of what they never made.
template <typename Result, typename What>
Result withBlock(const char* caller, void** handle, Result fallback, What what) noexcept {
  if (handle == nullptr) return fallback;
  {
    HandleTable& all = handleTable();
    const std::lock_guard guard(all.mutex);
    const auto found = all.blocks.find(handle);
    if (found != all.blocks.end()) return what(*found->second);
  }
  complain(caller, handle);
  return fallback;
}

}  // namespace

void** createHandle(HostState& owner, std::uint64_t bytes) noexcept {
  auto* block = new (std::nothrow) Block;
  if (block == nullptr) return nullptr;
  block->data = allocate(bytes);
  block->bytes = bytes;
  block->owner = &owner;
  if (block->data == nullptr) {
    delete block;
    return nullptr;
  }
  if (owner.options.stress.poisonMemory) std::memset(block->data, kFresh, bytes);
  try {
    HandleTable& all = handleTable();
    const std::lock_guard guard(all.mutex);
    block->serial = ++all.serials;
    all.blocks.emplace(&block->data, block);
  } catch (const std::bad_alloc&) {
    ::operator delete(block->data, kHandleAlignment);
    delete block;
    return nullptr;
  }
  return &block->data;
}

void** createHandle(HostState& owner, std::span<const std::byte> contents) {
  void** handle = createHandle(owner, contents.size());
  if (handle == nullptr) throw std::bad_alloc();
  if (!contents.empty()) std::memcpy(*handle, contents.data(), contents.size());
  return handle;
}

void* lockHandle(void** handle) noexcept {
  return withBlock<void*>("lock", handle, nullptr, [](Block& block) {
    ++block.locks;
    return block.data;
  });
}

void unlockHandle(void** handle) noexcept {
  const bool balanced = withBlock("unlock", handle, true, [](Block& block) {
    if (block.locks == 0) return false;
    --block.locks;
    settle(block);
    return true;
  });
  if (!balanced) {
    if (HostState* host = currentHost()) host->report("unlock: the handle was not locked");
  }
}

void disposeHandle(void** handle) noexcept {
  if (handle == nullptr) return;
  Block* block = nullptr;
  {
    HandleTable& all = handleTable();
    const std::lock_guard guard(all.mutex);
    const auto found = all.blocks.find(handle);
    if (found != all.blocks.end()) {
      block = found->second;
      all.blocks.erase(found);
    }
  }
  if (block == nullptr) return complain("dispose", handle);
  release(*block);
  delete block;
}

std::uint64_t handleSize(void** handle) noexcept {
  return withBlock<std::uint64_t>("size", handle, 0, [](Block& block) { return block.bytes; });
}

bool resizeHandle(void**& handle, std::uint64_t bytes) noexcept {
  return withBlock("resize", handle, false, [&](Block& block) { return moveTo(block, bytes); });
}

bool isLiveHandle(void** handle) noexcept {
  return handleOwner(handle) != nullptr;
}

HostState* handleOwner(void** handle) noexcept {
  HandleTable& all = handleTable();
  const std::lock_guard guard(all.mutex);
  const auto found = all.blocks.find(handle);
  return found == all.blocks.end() ? nullptr : found->second->owner;
}

std::uint32_t handleLocks(void** handle) noexcept {
  return withBlock<std::uint32_t>("locks", handle, 0, [](Block& block) { return block.locks; });
}

void adjustLocks(void** handle, std::int32_t by) noexcept {
  withBlock("locks", handle, true, [&](Block& block) {
    const std::int64_t locks = static_cast<std::int64_t>(block.locks) + by;
    block.locks = static_cast<std::uint32_t>(locks < 0 ? 0 : locks);
    settle(block);
    return true;
  });
}

std::uint64_t handleSerial(void** handle) noexcept {
  HandleTable& all = handleTable();
  const std::lock_guard guard(all.mutex);
  const auto found = all.blocks.find(handle);
  return found == all.blocks.end() ? 0 : found->second->serial;
}

void markKept(void** handle) noexcept {
  withBlock("keep", handle, true, [](Block& block) { return block.kept = true; });
}

HandleCount countHandles(const HostState& owner) {
  HandleCount count;
  HandleTable& all = handleTable();
  const std::lock_guard guard(all.mutex);
  for (const auto& [handle, block] : all.blocks) {
    if (block->owner != &owner || block->kept) continue;
    ++count.handles;
    count.locks += block->locks;
  }
  return count;
}

void abandonHandles(const HostState& owner) noexcept {
  HandleTable& all = handleTable();
  const std::lock_guard guard(all.mutex);
  std::erase_if(all.blocks, [&](const auto& entry) {
    if (entry.second->owner != &owner) return false;
    release(*entry.second);
    delete entry.second;
    return true;
  });
}

std::vector<std::byte> handleContents(void** handle) {
  const auto bytes = static_cast<std::size_t>(handleSize(handle));
  std::vector<std::byte> contents;
  contents.reserve(bytes);
  if (const auto* data = static_cast<const std::byte*>(lockHandle(handle))) {
    contents.assign(data, data + bytes);  // not cleared before: images may be large
    unlockHandle(handle);
  }
  return contents;
}

}  // namespace host
