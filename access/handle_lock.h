// access/handle_lock.h — a host handle, locked for as long as this object lives.
#pragma once

#include <utility>

#include "hostapi/callbacks.h"
#include "hostapi/command_data.h"

namespace varilum {

// Locks through the utility callbacks. A null handle, or one that the host will not lock, gives
// null data, and nothing is unlocked. Locks nest: others may hold the same handle.
class HandleLock {
 public:
  HandleLock() = default;
  HandleLock(const PF_InData& in, void** handle) noexcept
      : utils_(in.utils),
        handle_(handle),
        data_(handle ? utils_->host_lock_handle(handle) : nullptr) {}
  HandleLock(HandleLock&& other) noexcept
      : utils_(other.utils_), handle_(other.handle_), data_(std::exchange(other.data_, nullptr)) {}
  HandleLock& operator=(HandleLock&& other) noexcept {
    unlock();
    utils_ = other.utils_;
    handle_ = other.handle_;
    data_ = std::exchange(other.data_, nullptr);
    return *this;
  }
  ~HandleLock() { unlock(); }

  explicit operator bool() const noexcept { return data_ != nullptr; }
  void* data() const noexcept { return data_; }

  void unlock() noexcept {
    if (data_ != nullptr) utils_->host_unlock_handle(handle_);
    data_ = nullptr;
  }

  // Gives the lock away: the handle stays locked.
  void* leaveLocked() noexcept { return std::exchange(data_, nullptr); }

 private:
  PF_UtilCallbacks* utils_ = nullptr;
  void** handle_ = nullptr;
  void* data_ = nullptr;
};

// The same, for a handle that holds one T.
template <class T>
class Locked : public HandleLock {
 public:
  using HandleLock::HandleLock;

  T* get() const noexcept { return static_cast<T*>(data()); }
  T* operator->() const noexcept { return get(); }
  T& operator*() const noexcept { return *get(); }
};

}  // namespace varilum
