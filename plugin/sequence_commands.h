// plugin/sequence_commands.h — the commands about an instance's life.
#pragma once

#include <cstdint>

#include "plugin/command.h"

namespace varilum {

std::int32_t sequenceSetup(const Command& command);
std::int32_t sequenceResetup(const Command& command);
std::int32_t sequenceFlatten(const Command& command);
std::int32_t getFlattenedSequenceData(const Command& command);
std::int32_t sequenceSetdown(const Command& command);

}  // namespace varilum
