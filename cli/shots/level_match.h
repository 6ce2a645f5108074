// cli/shots/level_match.h — a curve of levels handed to the effect so that the picture really takes
// it.
#pragma once

#include <span>
#include <vector>

#include "cli/shots/shot.h"
#include "host/effect.h"
#include "host/image.h"
#include "host/instance.h"

namespace cli {

/// The level of each picture that a curve is drawn through: mean luma where that was measured, else
/// what the effect holds. 0 where the effect corrects nothing and for single frames far off the
/// others, which would pull the curve towards them.
std::vector<double> levelsToFollow(Shot& shot);

/// Sets keyframes under which the pictures come out as bright as `wanted`, one level a picture, on
/// the scale of levelsToFollow(). The effect measures samples, weighs colours in a way of its own
/// and takes no account of what is cut off at white; so where lumas were measured, the effect is
/// asked what it would make of each picture, and given what makes up for the difference.
/// `spreads` as for followLevels(). Throws host::Error.
void followLumas(host::Effect& effect, Shot& shot, std::span<const double> wanted,
                 std::span<const double> spreads, host::Depth depth, host::RenderPath path);

}  // namespace cli
