// cli/options/list_file.h — text files of numbers that users give: one entry a line.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace cli {

/// A line with something on it.
struct ListLine {
  std::size_t number = 0;           ///< from 1
  std::vector<std::string> fields;  ///< between blanks, commas, semicolons and equals signs
};

/// The lines of a text file; empty ones and what follows a # are passed over. Throws Failure, which
/// names the option, when the file is not there, cannot be read or is no list (longer than 64 MB).
std::vector<ListLine> readListFile(const std::string& path, const std::string& option);

}  // namespace cli
