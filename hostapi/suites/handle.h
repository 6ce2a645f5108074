// hostapi/suites/handle.h — relocatable memory.
#pragma once

#include <cstdint>

// [any thread] The same handles as those of the utility callbacks.
struct PF_HandleSuite1 {
  // byte count; gives handle or null
  void** (*host_new_handle)(std::uint64_t);
  // handle; gives address of the block or null
  void* (*host_lock_handle)(void**);
  // handle
  void (*host_unlock_handle)(void**);
  // handle
  void (*host_dispose_handle)(void**);
  // handle; gives byte count
  std::uint64_t (*host_get_handle_size)(void**);
  // new byte count; in/out handle variable (value may change)
  std::int32_t (*host_resize_handle)(std::uint64_t, void***);
};

inline constexpr const char* kPFHandleSuite = "PF Handle Suite";

inline constexpr std::int32_t kPFHandleSuiteVersion1 = 2;
