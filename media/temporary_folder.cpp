// media/temporary_folder.cpp — a hidden folder for what is being made.
#include "media/temporary_folder.h"

#include <system_error>
#include <utility>

#include "media/error.h"
#include "media/remains.h"
#include "media/system_file.h"

namespace media {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder(const fs::path& beside, const std::string& name) {
  removeRemains(beside, name);
  for (;;) {
    path_ = beside / temporaryName(name, "");
    std::error_code status;
    if (fs::create_directory(path_, status)) {
      descriptor_ = openFolder(path_);
      if (descriptor_ < 0 || markInUse(descriptor_)) return;
      closeFile(std::exchange(descriptor_, -1));
    } else if (status) {
      throw Error(Problem::unwritable, "The folder " + beside.string() +
                                           " may not be written to: " + status.message() + ".");
    }
  }
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
  if (descriptor_ >= 0) closeFile(descriptor_);
}

}  // namespace media
