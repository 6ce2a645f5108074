// cli/options/machine_memory_windows.cpp — how much memory there is, as the system tells.
#include <windows.h>

#include "cli/options/memory_size.h"

namespace cli {

std::uint64_t machineMemory() {
  MEMORYSTATUSEX status{};
  status.dwLength = sizeof status;
  return GlobalMemoryStatusEx(&status) != 0 ? status.ullTotalPhys : 0;
}

}  // namespace cli
