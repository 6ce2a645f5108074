// cli/effect_location.h — where the effect library is.
#pragma once

#include <filesystem>
#include <string>

namespace cli {

/// `given` if not empty, else the environment's VARILUM_EFFECT, else libvarilum4.so beside this
/// program or in ../lib. Throws Failure, saying where it looked.
std::filesystem::path findEffect(const std::string& given);

}  // namespace cli
