// plugin/sequence_commands.cpp — the commands about an instance's life.
#include "plugin/sequence_commands.h"

#include "plugin/global_setup.h"
#include "plugin/messages.h"
#include "resources/string_table.h"
#include "stats/lifecycle.h"

namespace varilum {

std::int32_t sequenceSetup(const Command& command) {
  const PF_InData& in = command.in;
  const Locked<GlobalState> global{in, command.out.global_data};
  if (global) {
    fetchVersionText(in, *global);
    if (global->showUsageNotes != 0) showMessage(in, global.get(), kTextUsageNotes);
    global->showUsageNotes = 0;
  }
  return reportOutOfMemory(in, global.get(), setupSequence(in, command.out));
}

std::int32_t sequenceResetup(const Command& command) {
  const Locked<GlobalState> global{command.in, command.out.global_data};
  return reportOutOfMemory(command.in, global.get(), resetupSequence(command.in, command.out));
}

std::int32_t sequenceFlatten(const Command& command) {
  return flattenSequence(command.in, command.out, true);
}

std::int32_t getFlattenedSequenceData(const Command& command) {
  return flattenSequence(command.in, command.out, false);
}

std::int32_t sequenceSetdown(const Command& command) {
  return setdownSequence(command.in, command.out);
}

}  // namespace varilum
