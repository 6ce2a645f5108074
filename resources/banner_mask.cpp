// resources/banner_mask.cpp — the notice's picture, expanded from its run lengths while compiling.
#include "resources/banner_mask.h"

#include <cstddef>

namespace varilum {
namespace {

// Background first, then in turn. See resources/make_banner.cpp for how to draw it anew.
constexpr std::uint32_t kRuns[] = {
#include "resources/banner_runs.inc"
};

consteval std::size_t runTotal() {
  std::size_t total = 0;
  for (const std::uint32_t run : kRuns) total += run;
  return total;
}
static_assert(runTotal() == std::size_t{kBannerWidth} * kBannerHeight);

consteval BannerMask expandRuns() {
  BannerMask mask{kBannerWidth, kBannerHeight, {}};
  std::size_t at = 0;
  bool ink = false;
  for (const std::uint32_t run : kRuns) {
    if (ink) {
      for (std::uint32_t i = 0; i < run; ++i) mask.pixels[at + i] = kBannerInk;
    }
    at += run;
    ink = !ink;
  }
  return mask;
}

}  // namespace

constinit const BannerMask kBannerMask = expandRuns();

}  // namespace varilum
