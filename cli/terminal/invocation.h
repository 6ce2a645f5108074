// cli/terminal/invocation.h — what the program was started with, in UTF-8 on every system.
#pragma once

#include <string>
#include <vector>

namespace cli {

/// The words of the command line, without the program's own name. On Windows they are asked of the
/// system, since main() is given them in an older encoding that has not all characters; and in a
/// program that calls this, narrow text that becomes a std::filesystem::path is taken for UTF-8.
std::vector<std::string> programWords(int count, char** words);

/// A variable of the environment; empty if it is not set.
std::string environmentValue(const char* name);

}  // namespace cli
