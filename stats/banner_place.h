// stats/banner_place.h — which pixels of a frame the analyse-first notice paints, and how.
#pragma once

#include <cstdint>

#include "resources/banner_mask.h"
#include "stats/frame_stats.h"

namespace varilum {

enum class BannerPart { outside, background, ink };

// The notice's rectangle, measured once for a frame so that a pixel costs no division. The default
// is nowhere.
struct BannerPlace {
  std::uint32_t left = 0;  // as unsigned: differences wrap
  std::uint32_t top = 0;
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  double columnScale = 0.0;  // 1 / width
  double rowScale = 0.0;

  BannerPart at(std::int32_t x, std::int32_t y) const noexcept {
    const std::uint32_t dx = static_cast<std::uint32_t>(x) - left;
    const std::uint32_t dy = static_cast<std::uint32_t>(y) - top;
    if (dx >= width || dy >= height) return BannerPart::outside;
    const int mask = kBannerMask.pixels[share(kBannerHeight, dy, rowScale) * kBannerWidth +
                                        share(kBannerWidth, dx, columnScale)];
    return mask != 0 ? BannerPart::ink : BannerPart::background;
  }

 private:
  // count x offset / extent, truncated. Exact: the half keeps the quotient 2^-33 away from whole
  // numbers, and for counts below 2^12 the product is within 2^-40 of it.
  static std::uint32_t share(std::uint32_t count, std::uint32_t offset, double scale) noexcept {
    static_assert(kBannerWidth < 1 << 12 && kBannerHeight < 1 << 12);
    const auto product = static_cast<std::int64_t>(std::uint64_t{count} * offset);
    return static_cast<std::uint32_t>((static_cast<double>(product) + 0.5) * scale);
  }
};

// An empty or reversed rectangle is nowhere.
inline BannerPlace placeBanner(const Rect& rect) noexcept {
  if (rect.left >= rect.right || rect.top >= rect.bottom) return {};
  BannerPlace place;
  place.left = static_cast<std::uint32_t>(rect.left);
  place.top = static_cast<std::uint32_t>(rect.top);
  place.width = static_cast<std::uint32_t>(rect.right) - place.left;
  place.height = static_cast<std::uint32_t>(rect.bottom) - place.top;
  place.columnScale = 1.0 / place.width;
  place.rowScale = 1.0 / place.height;
  return place;
}

}  // namespace varilum
