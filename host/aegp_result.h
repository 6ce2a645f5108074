// host/aegp_result.h — results of the application suites, which number errors in their own way.
#pragma once

#include <cstdint>

namespace host {

inline constexpr std::int32_t kAegpErrorGeneric = 1;
inline constexpr std::int32_t kAegpErrorParameter = 3;
inline constexpr std::int32_t kAegpErrorMemory = 4;
inline constexpr std::int32_t kAegpErrorWrongThread = 5;

}  // namespace host
