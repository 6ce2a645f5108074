// cli/same_file.cpp — keeping a clip from being written over itself.
#include "cli/same_file.h"

#include <fmt/format.h>

#include <filesystem>
#include <system_error>

#include "cli/error.h"

namespace cli {

void refuseSameFile(const std::string& input, const std::string& output) {
  std::error_code ignored;
  if (input == output || std::filesystem::equivalent(input, output, ignored)) {
    throw UsageError(fmt::format("{} is both input and output; give another output.", output));
  }
}

}  // namespace cli
