// plugin/parameter_changes.h — USER_CHANGED_PARAM: what each control does when it is used.
#pragma once

#include <cstdint>

#include "plugin/command.h"

namespace varilum {

std::int32_t userChangedParam(const Command& command);

// Changes the hidden counter, which the host takes for a change of the effect's inputs: it then
// discards the frames that it has kept.
void bumpCounter(PF_ParamDef** params) noexcept;

}  // namespace varilum
