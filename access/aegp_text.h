// access/aegp_text.h — a text that the host returned in memory of its own kind.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "access/suite.h"
#include "hostapi/suites/aegp_memory.h"

namespace varilum {

// Owns the handle; frees it on destruction. The suite must outlive it.
class AegpText {
 public:
  explicit AegpText(const Suite<AEGP_MemorySuite1>& memory) noexcept : memory_(memory) {}
  AegpText(const AegpText&) = delete;
  AegpText& operator=(const AegpText&) = delete;
  ~AegpText() {
    if (handle_ != nullptr) memory_->AEGP_FreeMemHandle(handle_);
  }

  // For the call that fills it in.
  AEGP_MemHandle* receive() noexcept { return &handle_; }

  // Copies the text, cut to capacity - 1 characters, and ends it with NUL. Empty when there is
  // none.
  void copyTo(char* buffer, std::size_t capacity) const noexcept {
    buffer[0] = 0;
    std::uint32_t size = 0;
    void* data = nullptr;
    if (handle_ == nullptr || memory_->AEGP_GetMemHandleSize(handle_, &size) != 0 ||
        memory_->AEGP_LockMemHandle(handle_, &data) != 0) {
      return;
    }
    if (data != nullptr) {
      std::string_view text{static_cast<const char*>(data), size};
      text = text.substr(0, text.find('\0')).substr(0, capacity - 1);
      buffer[text.copy(buffer, text.size())] = 0;
    }
    memory_->AEGP_UnlockMemHandle(handle_);
  }

 private:
  const Suite<AEGP_MemorySuite1>& memory_;
  AEGP_MemHandle handle_ = nullptr;
};

}  // namespace varilum
