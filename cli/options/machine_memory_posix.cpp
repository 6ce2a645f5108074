// cli/options/machine_memory_posix.cpp — how much memory there is, as the system tells.
#include <unistd.h>

#include <algorithm>
#include <fstream>

#include "cli/options/memory_size.h"

namespace cli {
namespace {

// A container's bound, where there is one; "max" or a missing file: none.
std::uint64_t containerLimit() {
  for (const char* file :
       {"/sys/fs/cgroup/memory.max", "/sys/fs/cgroup/memory/memory.limit_in_bytes"}) {
    std::ifstream in(file);
    std::uint64_t bytes = 0;
    if (in >> bytes && bytes > 0) return bytes;
  }
  return UINT64_MAX;
}

}  // namespace

std::uint64_t machineMemory() {
  const long pages = ::sysconf(_SC_PHYS_PAGES);
  const long pageSize = ::sysconf(_SC_PAGESIZE);
  if (pages <= 0 || pageSize <= 0) return 0;
  const auto physical = static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(pageSize);
  return std::min(physical, containerLimit());
}

}  // namespace cli
