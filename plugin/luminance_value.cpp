// plugin/luminance_value.cpp — the value of the "Luminance" parameter: one double in a handle.
#include "plugin/luminance_value.h"

#include <cstring>

#include "hostapi/commands.h"

namespace varilum {

std::int32_t newLuminanceValue(const PF_InData& in, void*** result) noexcept {
  void** handle = in.utils->host_new_handle(kLuminanceValueSize);
  if (handle == nullptr) return 0;
  {
    const LuminanceLock value{in, handle};
    if (value) {
      value.set(kDefaultLuminance);
      *result = handle;
      return 0;
    }
  }
  in.utils->host_dispose_handle(handle);
  return PF_Err_OUT_OF_MEMORY;
}

double LuminanceLock::get() const noexcept {
  double luminance;
  std::memcpy(&luminance, data(), sizeof luminance);
  return luminance;
}

void LuminanceLock::set(double luminance) const noexcept {
  std::memcpy(data(), &luminance, sizeof luminance);
}

void nudgeLuminance(const PF_InData& in, void** value, double difference) noexcept {
  const LuminanceLock lock{in, value};
  if (lock) lock.set(lock.get() + difference);
}

}  // namespace varilum
