// plugin/about.cpp — the text of the About box.
#include "plugin/about.h"

#include <cstdio>

#include "resources/effect_identity.h"
#include "resources/string_table.h"

namespace varilum {

std::int32_t about(const Command& command) {
  const Locked<GlobalState> global{command.in, command.out.global_data};
  const char* tag = !global                       ? ""
                    : global->isAfterEffects != 0 ? "AE"
                    : global->isPremiere != 0     ? "PP"
                                                  : "";
  char hostLine[128];
  std::snprintf(hostLine, sizeof hostLine, "%s v%d.%d   %s", tag, command.in.version.major,
                command.in.version.minor, global ? global->hostVersionText : "");
  // The host breaks lines in its About box at carriage returns.
  std::snprintf(command.out.return_msg, sizeof command.out.return_msg, "%s v%d.%d.%d %s\r%s",
                lookupString(kTextEffectName), kEffectMajor, kEffectMinor, kEffectBug,
                lookupString(kTextCopyright), hostLine);
  return 0;
}

}  // namespace varilum
