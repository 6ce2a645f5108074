// tests/footage/findings_text.h — all that is found in a clip, as a line of text a shot.
#pragma once

#include <span>
#include <string>

#include "footage/frame_measure.h"

namespace footage::test {

/// Shots with their repeats, outliers and matte, by the functions that take a whole clip.
std::string findingsText(std::span<const FrameMeasure> clip);

}  // namespace footage::test
