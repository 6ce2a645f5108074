// media/remains.h — temporary files of killed runs, told from those in use.
//
// A run that is killed removes nothing. Its temporary files are told from another run's by a lock
// that ends with the process, however that ends.
#pragma once

#include <filesystem>
#include <string>

namespace media {

/// Removes the files and folders in `folder` that are named as temporaryName() names them and that
/// nobody has marked. What cannot be removed stays.
void removeRemains(const std::filesystem::path& folder, const std::string& stem);

/// ".<stem>.part-<process>-<serial><extension>", another one at each call.
std::string temporaryName(const std::string& stem, const std::string& extension);

}  // namespace media
