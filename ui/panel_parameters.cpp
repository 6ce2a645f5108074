// ui/panel_parameters.cpp — the parameters that the panel's mouse actions write.
#include "ui/panel_parameters.h"

#include <cmath>
#include <cstring>

#include "access/handle_lock.h"
#include "plugin/param_index.h"
#include "stats/number_conversion.h"

namespace varilum {
namespace {

// change(old level) gives the new one.
template <class Change>
bool writeLuminance(const PF_InData& in, PF_ParamDef** params, Change change) noexcept {
  if (params == nullptr) return false;
  PF_ParamDef& parameter = *params[PARAM_LUMINANCE];
  const HandleLock value{in, parameter.u.arb_d.value};
  if (!value) return false;
  double level = 0.0;
  std::memcpy(&level, value.data(), sizeof level);
  level = change(level);
  std::memcpy(value.data(), &level, sizeof level);
  parameter.uu.change_flags |= PF_ChangeFlag_CHANGED_VALUE;
  return true;
}

}  // namespace

bool setLuminance(const PF_InData& in, PF_ParamDef** params, double level) noexcept {
  return writeLuminance(in, params, [=](double) { return level; });
}

bool lowerLuminance(const PF_InData& in, PF_ParamDef** params, double difference) noexcept {
  return writeLuminance(in, params, [=](double level) { return level - difference; });
}

void setShiftSpread(PF_ParamDef** params, double spread) noexcept {
  if (params == nullptr) return;
  PF_ParamDef& parameter = *params[PARAM_SHIFT_SPREAD];
  parameter.u.fd.value = truncateToInt(std::round(spread * 65536.0));
  parameter.uu.change_flags |= PF_ChangeFlag_CHANGED_VALUE;
}

}  // namespace varilum
