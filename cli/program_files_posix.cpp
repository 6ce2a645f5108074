// cli/program_files_posix.cpp — where this program is on Linux.
#include <system_error>

#include "cli/program_files.h"

namespace cli {

const char* const kEffectLibrary = "libvarilum4.so";

std::filesystem::path programFolder() {
  std::error_code ignored;
  return std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path();
}

}  // namespace cli
