// cli/same_file.h — keeping a clip from being written over itself.
#pragma once

#include <string>

namespace cli {

/// Throws UsageError when both names are one file, whatever --force says.
void refuseSameFile(const std::string& input, const std::string& output);

}  // namespace cli
