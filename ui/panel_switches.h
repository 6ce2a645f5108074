// ui/panel_switches.h — the panel's checkboxes.
#pragma once

#include <cstdint>

#include "hostapi/parameters.h"

namespace varilum {

// Whether a checkbox is on now; without parameters none is.
inline bool isOn(PF_ParamDef** params, std::int32_t index) noexcept {
  return params != nullptr && params[index]->u.bd.value != 0;
}

}  // namespace varilum
