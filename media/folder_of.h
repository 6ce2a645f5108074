// media/folder_of.h — the folder that a path names a file in.
#pragma once

#include <filesystem>

namespace media {

/// "." for a bare name.
inline std::filesystem::path folderOf(const std::filesystem::path& path) {
  return path.has_parent_path() ? path.parent_path() : std::filesystem::path(".");
}

}  // namespace media
