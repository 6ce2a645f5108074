// hostapi/suites/aegp_memory.h — memory that scripts and other AEGP calls return.
#pragma once

#include <cstdint>

#include "hostapi/scalars.h"

struct AEGP_MemorySuite1 {
  // plug-in id; label text; byte count; flags; out handle
  std::int32_t (*AEGP_NewMemHandle)(std::int32_t, const char*, std::uint32_t, std::int32_t,
                                    AEGP_MemHandle*);
  // handle
  std::int32_t (*AEGP_FreeMemHandle)(AEGP_MemHandle);
  // handle; out address (nestable)
  std::int32_t (*AEGP_LockMemHandle)(AEGP_MemHandle, void**);
  // handle
  std::int32_t (*AEGP_UnlockMemHandle)(AEGP_MemHandle);
  // handle; out byte count
  std::int32_t (*AEGP_GetMemHandleSize)(AEGP_MemHandle, std::uint32_t*);
  std::int32_t (*AEGP_ResizeMemHandle)(const char*, std::uint32_t, AEGP_MemHandle);
  std::int32_t (*AEGP_SetMemReportingOn)(std::uint8_t);
  std::int32_t (*AEGP_GetMemStats)(std::int32_t, std::int32_t*, std::int32_t*);
};

inline constexpr const char* kAEGPMemorySuite = "AEGP Memory Suite";

inline constexpr std::int32_t kAEGPMemorySuiteVersion1 = 1;

inline constexpr std::int32_t AEGP_MemFlag_NONE = 0;
inline constexpr std::int32_t AEGP_MemFlag_CLEAR = 1;
inline constexpr std::int32_t AEGP_MemFlag_QUIET = 2;
