// cli/project/project_file.h — what `analyze` leaves behind: a clip's analysis and the effect's
// settings.
//
// The layout is described in docs/project-file.md. A file comes from outside and is hostile until
// its sizes and checksums have been found right.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/shots/shot_findings.h"
#include "host/instance.h"

namespace cli {

/// What tells one clip from another: its shape and the pixels of three of its frames.
struct ClipFingerprint {
  int width = 0;
  int height = 0;
  std::int64_t frames = 0;                ///< as the clip's container has them
  std::array<std::uint32_t, 3> pixels{};  ///< CRC-32 of the first, middle and last, 8-bit ARGB

  friend bool operator==(const ClipFingerprint&, const ClipFingerprint&) = default;
};

/// A part of the clip with an instance of the effect of its own.
struct ProjectShot {
  ShotFindings found;
  host::SavedInstance effect;  ///< flat data and parameters; its frames are pictures of the shot
};

struct Project {
  std::string program;       ///< version of the program that wrote it
  std::string clip;          ///< absolute path of the clip
  std::string clipRelative;  ///< the same seen from the project's folder
  int startNumber = -1;      ///< of an image sequence, when it was given; else -1
  double frameRate = 0.0;    ///< of the clip, frames a second; 0 = unknown
  ClipFingerprint fingerprint;
  std::int32_t layerFrames = 0;      ///< frames analysed; fewer than the clip's if it breaks off
  std::uint32_t effectVersion = 0;   ///< packed, as the effect reports it
  std::string target = "smoothing";  ///< what was asked of the levels, as Target reads it
  std::vector<ProjectShot> shots;    ///< in order, frames 0 .. layerFrames - 1 among them
};

/// Throws Failure: exists and no force, unwritable, disk full.
void writeProject(const std::filesystem::path& path, const Project& project, bool force);

/// Reads every version there was; one of version 1 has one shot. Throws Failure: missing, no
/// project, damaged, from a newer program.
Project readProject(const std::filesystem::path& path);

/// True when the file starts like a project.
bool looksLikeProject(const std::filesystem::path& path) noexcept;

}  // namespace cli
