// resources/banner_mask.h — the picture of the notice that an unanalysed layer shows.
#pragma once

#include <cstdint>

namespace varilum {

inline constexpr std::int32_t kBannerWidth = 2149;
inline constexpr std::int32_t kBannerHeight = 200;
inline constexpr std::uint8_t kBannerInk = 127;  // any other pixel is 0, background

struct BannerMask {
  std::int32_t width;
  std::int32_t height;
  std::uint8_t pixels[kBannerHeight * kBannerWidth];  // row by row from the top
};

extern const BannerMask kBannerMask;

}  // namespace varilum
