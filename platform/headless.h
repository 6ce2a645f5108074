// platform/headless.h — whether the process runs with nobody at the screen.
#pragma once

#include <cstdlib>
#include <string_view>

namespace varilum {

inline bool isHeadless() noexcept {
  const char* value = std::getenv("VARILUM_HEADLESS");
  return value != nullptr && std::string_view{value} == "1";
}

}  // namespace varilum
