// stats/pixel_lanes_plain.h — the four channels of a deep pixel, for any processor.
#pragma once

#include <cstdint>

#include "hostapi/world.h"
#include "stats/fast_power.h"

namespace varilum {

inline constexpr float kHighestChannel = 32767.0f;  // of 16-bit and float pixels alike

// Clamped to 0..kHighestChannel; what is no number becomes black.
inline float clampChannel(float value) noexcept {
  if (!(value > 0.0f)) return 0.0f;
  return value > kHighestChannel ? kHighestChannel : value;
}

// Red, green and blue; alpha goes from pixel to pixel at the end. Pixels of the same type may be
// one and the same.
struct PlainLanes {
  float red;
  float green;
  float blue;

  template <class Pixel>
  static PlainLanes load(const Pixel& pixel) noexcept {
    return {static_cast<float>(pixel.red), static_cast<float>(pixel.green),
            static_cast<float>(pixel.blue)};
  }

  template <class Change>
  PlainLanes each(Change change) const noexcept {
    return {change(red), change(green), change(blue)};
  }
  PlainLanes times(float factor) const noexcept {
    return each([factor](float value) { return value * factor; });
  }
  PlainLanes minus(float offset) const noexcept {
    return each([offset](float value) { return value - offset; });
  }
  PlainLanes plus(float offset) const noexcept {
    return each([offset](float value) { return value + offset; });
  }
  // fastPower of the channel as a share of white, in double, times white. A product, not a
  // quotient: fastPower reads the upper half of the number only, which is the same for all 65536
  // values. Adding 0 makes a negative zero positive: the power goes by the sign bit too.
  PlainLanes raised(double power, double white) const noexcept {
    const double share = 1.0 / white;
    return each([=](float value) {
      return static_cast<float>(fastPower(value * share + 0.0, power) * white);
    });
  }

  // Clamped, and truncated to whole numbers where the channels are.
  void store(std::uint16_t alpha, PF_Pixel16& out) const noexcept { put(alpha, out); }
  void store(float alpha, PF_PixelFloat& out) const noexcept { put(alpha, out); }

 private:
  template <class Channel, class Pixel>
  void put(Channel alpha, Pixel& out) const noexcept {
    out = {alpha, static_cast<Channel>(clampChannel(red)),
           static_cast<Channel>(clampChannel(green)), static_cast<Channel>(clampChannel(blue))};
  }
};

}  // namespace varilum
