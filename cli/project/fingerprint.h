// cli/project/fingerprint.h — telling whether a project belongs to a clip.
#pragma once

#include <string>

#include "cli/job/clip_source.h"
#include "cli/project/project_file.h"

namespace cli {

/// Decodes three frames. Throws media::Error.
ClipFingerprint fingerprintOf(ClipSource& source);

/// What differs, for a sentence such as "it has 10 frames, the project's clip 12"; empty when the
/// clips are the same.
std::string differenceBetween(const ClipFingerprint& project, const ClipFingerprint& clip);

}  // namespace cli
