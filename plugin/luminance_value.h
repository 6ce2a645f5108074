// plugin/luminance_value.h — the value of the "Luminance" parameter: one double in a handle.
#pragma once

#include <cstdint>

#include "access/handle_lock.h"
#include "hostapi/command_data.h"

namespace varilum {

inline constexpr double kDefaultLuminance = 128.0;  // on the 0..255 scale
inline constexpr std::size_t kLuminanceValueSize = sizeof(double);

// A value of kDefaultLuminance into *result. Without memory for it: 0, and *result is left alone.
// PF_Err_OUT_OF_MEMORY when it will not lock.
std::int32_t newLuminanceValue(const PF_InData& in, void*** result) noexcept;

// One value, locked. Values come from the host as handles of 8 bytes.
class LuminanceLock : public HandleLock {
 public:
  using HandleLock::HandleLock;

  double get() const noexcept;
  void set(double luminance) const noexcept;
};

// Adds difference to a value in place; nothing without a value, or when it will not lock.
void nudgeLuminance(const PF_InData& in, void** value, double difference) noexcept;

}  // namespace varilum
