// cli/program_version.cpp — the program's version.
#include "cli/commands.h"

namespace cli {

const char* programVersion() {
  return VARILUM_PROGRAM_VERSION;
}

}  // namespace cli
