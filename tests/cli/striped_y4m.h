// tests/cli/striped_y4m.h — clips of grey stripes written and read by hand, as YUV4MPEG2.
#pragma once

#include <string>

#include "tests/cli/striped_clip.h"

namespace cli::test {

/// Grey of 8 bits and the full range, 24 frames a second.
void writeY4m(const std::string& path, const Frames& frames);

/// Throws std::runtime_error for any other header, a frame that is cut off, and a stripe that is
/// not flat.
Frames readY4m(const std::string& path);

}  // namespace cli::test
