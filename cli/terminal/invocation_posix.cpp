// cli/terminal/invocation_posix.cpp — what the program was started with on POSIX systems.
#include <algorithm>
#include <cstdlib>

#include "cli/terminal/invocation.h"

namespace cli {

std::vector<std::string> programWords(int count, char** words) {
  return {words + std::min(count, 1), words + count};
}

std::string environmentValue(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

}  // namespace cli
