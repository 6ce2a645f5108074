// stats/target_checkouts.cpp — the targets of all frames, from the parameters as the host has them.
#include "stats/target_checkouts.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "access/param_checkout.h"
#include "plugin/param_index.h"
#include "stats/number_conversion.h"
#include "stats/sequence_arrays.h"

namespace varilum {
namespace {

std::int32_t firstOf(std::int32_t earlier, std::int32_t later) noexcept {
  return earlier != 0 ? earlier : later;
}

class CheckedOutTargets : public TargetParameters {
 public:
  explicit CheckedOutTargets(const PF_InData& in) : in_(in) {}

  std::int32_t dontDeflicker(std::int32_t frame, bool& on) override {
    ParamCheckout checkout{in_, PARAM_DONT_DEFLICKER, frameTime(in_, frame)};
    if (checkout.error() != 0) return checkout.error();
    on = checkout.value().u.bd.value != 0;
    return checkout.checkIn();
  }

  std::int32_t keyframe(std::int32_t frame, double& luminance, float& spread) override {
    const std::int32_t time = frameTime(in_, frame);
    ParamCheckout level{in_, PARAM_LUMINANCE, time};
    if (level.error() != 0) return level.error();
    ParamCheckout shift{in_, PARAM_SHIFT_SPREAD, time};
    if (shift.error() != 0) return shift.error();
    readLuminanceValue(in_, level.value().u.arb_d.value, luminance);
    spread = static_cast<float>(fixedToDouble(shift.value().u.fd.value));
    const std::int32_t error = level.checkIn();
    return firstOf(error, shift.checkIn());
  }

  std::int32_t smoothingFrames(std::int32_t frame, std::int32_t& frames) override {
    ParamCheckout checkout{in_, PARAM_SMOOTHING_FRAMES, frameTime(in_, frame)};
    if (checkout.error() != 0) return checkout.error();
    frames = roundFixed(checkout.value().u.fd.value);
    return checkout.checkIn();
  }

 private:
  const PF_InData& in_;
};

}  // namespace

std::int32_t frameTime(const PF_InData& in, std::int32_t frame) noexcept {
  const std::int64_t time = std::int64_t{frame} * in.time_step;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(
      time, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

bool readLuminanceValue(const PF_InData& in, void** value, double& luminance) noexcept {
  const HandleLock lock{in, value};
  if (!lock) return false;
  std::memcpy(&luminance, lock.data(), sizeof luminance);
  return true;
}

std::int32_t computeTargets(const PF_InData& in, PF_ParamDef** params, SequenceState& state,
                            const LevelArrays& levels) {
  if (params == nullptr) return 0;
  state.deflickerMethod = params[PARAM_DEFLICKER_METHOD]->u.pd.value;
  CheckedOutTargets targets{in};
  const std::int32_t error =
      computeDesiredLuminance(targets, state.deflickerMethod == kDeflickerKeyframes, levels);
  state.recomputeDesired = 0;
  return error;
}

std::int32_t recomputeTargets(const PF_InData& in, PF_ParamDef** params, SequenceState& state) {
  const LevelLocks levels{in, state};
  return levels ? computeTargets(in, params, state, levels.arrays()) : 0;
}

}  // namespace varilum
