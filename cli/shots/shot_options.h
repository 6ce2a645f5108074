// cli/shots/shot_options.h — how a clip is taken apart before the effect sees it, as options.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace cli {

struct ShotOptions {
  enum class Shots : std::uint8_t { find, off, listed };

  Shots shots = Shots::find;
  std::string list;             ///< the file that names them, when listed
  bool keepDuplicates = false;  ///< else the effect sees each distinct picture once
  bool leaveFlashes = false;    ///< else exposure jumps are corrected
};

/// The options' group in --help.
inline constexpr const char* kShotGroup = "Shots";

/// "Shots": --shots, --duplicates, --flashes.
void addShotOptions(CLI::App& command, ShotOptions& options);

/// First frames of the shots but the first, as the file lists them, rising. 0 may be listed. Throws
/// Failure when the file is missing, UsageError when a line is no frame of the clip after the one
/// before it.
std::vector<std::int64_t> readShotList(const std::string& path, std::int64_t frameCount);

}  // namespace cli
