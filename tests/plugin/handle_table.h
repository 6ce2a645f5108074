// tests/plugin/handle_table.h — host memory for tests: counted, poisoned, and refused on demand.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <unordered_map>
#include <vector>

#include "hostapi/callbacks.h"

// The table that the callbacks serve; one lives at a time.
class HandleTable {
 public:
  HandleTable() {
    current_ = this;
    utils_.host_new_handle = [](std::uint64_t size) { return current_->create(size); };
    utils_.host_lock_handle = [](void** handle) { return current_->lock(handle); };
    utils_.host_unlock_handle = [](void** handle) { current_->unlock(handle); };
    utils_.host_dispose_handle = [](void** handle) { current_->dispose(handle); };
    utils_.host_get_handle_size = [](void** handle) -> std::uint64_t {
      return current_->block(handle).bytes.size();
    };
    utils_.ansi.strcpy = [](char* to, const char* from) { return std::strcpy(to, from); };
  }
  ~HandleTable() { current_ = nullptr; }
  HandleTable(const HandleTable&) = delete;
  HandleTable& operator=(const HandleTable&) = delete;

  PF_UtilCallbacks* utils() { return &utils_; }

  // The n-th call from now on (1-based) is refused, once.
  void refuseNew(int n) { newUntilRefusal_ = n; }
  void refuseLock(int n) { locksUntilRefusal_ = n; }
  bool refusalsPending() const { return newUntilRefusal_ > 0 || locksUntilRefusal_ > 0; }

  std::size_t live() const { return blocks_.size(); }
  int locks() const {
    int sum = 0;
    for (const auto& [handle, entry] : blocks_) sum += entry->lockCount;
    return sum;
  }
  int violations() const { return violations_; }  // of what is not alive

  void** create(std::uint64_t size) {
    if (newUntilRefusal_ > 0 && --newUntilRefusal_ == 0) return nullptr;
    auto entry = std::make_unique<Block>();
    entry->bytes.assign(size, std::byte{0xCD});
    entry->master = entry->bytes.data();
    void** handle = &entry->master;
    blocks_[handle] = std::move(entry);
    return handle;
  }

  // A handle that holds these bytes, as a saved project gives it.
  void** createFrom(const std::vector<std::byte>& bytes) {
    void** handle = create(bytes.size());
    std::ranges::copy(bytes, block(handle).bytes.begin());
    return handle;
  }

  std::vector<std::byte>& bytes(void** handle) { return block(handle).bytes; }
  bool isAlive(void** handle) const { return blocks_.count(handle) != 0; }

  void dispose(void** handle) {
    if (blocks_.erase(handle) == 0) ++violations_;
  }

  void* lock(void** handle) {
    if (locksUntilRefusal_ > 0 && --locksUntilRefusal_ == 0) return nullptr;
    if (!isAlive(handle)) {
      ++violations_;
      return nullptr;
    }
    ++block(handle).lockCount;
    return *handle;
  }

  void unlock(void** handle) {
    if (!isAlive(handle) || block(handle).lockCount == 0) {
      ++violations_;
      return;
    }
    --block(handle).lockCount;
  }

 private:
  struct Block {
    void* master = nullptr;
    std::vector<std::byte> bytes;
    int lockCount = 0;
  };
  Block& block(void** handle) { return *blocks_.at(handle); }

  inline static HandleTable* current_ = nullptr;
  PF_UtilCallbacks utils_{};
  std::unordered_map<void**, std::unique_ptr<Block>> blocks_;
  int newUntilRefusal_ = 0;
  int locksUntilRefusal_ = 0;
  int violations_ = 0;
};
