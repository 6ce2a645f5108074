// stats/pixel_kernels.cpp — one kernel, three kinds of arithmetic, one banner.
#include "stats/pixel_kernels.h"

#include "hostapi/commands.h"
#include "resources/banner_mask.h"
#include "stats/fast_power.h"
#include "stats/sequence_state.h"

namespace varilum {
namespace {

constexpr double kWhite16 = 32767.0;  // one below the host's white, and so it stays
constexpr float kHighest = 32767.0f;  // of 16-bit and float channels alike
constexpr double kLeastGamma = 0.01;

// Clamped; what is no number becomes black.
float clampChannel(float value) noexcept {
  if (!(value > 0.0f)) return 0.0f;
  return value > kHighest ? kHighest : value;
}

// What each depth does to one channel: correct it, keep it as the frame is not analysed, and tint
// it under the banner, each by its own rule. tint: 0 red, 1 green, 2 blue.
struct Arithmetic8 {
  using Pixel = PF_Pixel;
  using Channel = std::uint8_t;
  static constexpr Channel kInk = 255;
  static constexpr Channel kTint[3] = {15, 57, 115};

  static Channel correct(const FrameCorrection& correction, Channel value) noexcept {
    return correction.table[value];
  }
  static Channel keep(Channel value) noexcept { return value; }
  static Channel tint(Channel value, int channel) noexcept {
    return static_cast<Channel>((value >> 1) + kTint[channel]);
  }
};

struct Arithmetic16 {
  using Pixel = PF_Pixel16;
  using Channel = std::uint16_t;
  static constexpr Channel kInk = 65535;
  static constexpr Channel kTint[3] = {0x1FFE, 0x73FE, 0xE6FF};

  static Channel correct(const FrameCorrection& correction, Channel value) noexcept {
    const float channel = value;
    switch (correction.method) {
      case kCorrectionGamma:
        // A product, not a quotient: fastPower reads the upper half of the number only, which is
        // the same for all 65536 values.
        return whole(static_cast<float>(
            fastPower(value * (1.0 / kWhite16), correction.inverseGamma) * kWhite16));
      case kCorrectionShift:
        return whole((channel - correction.inputOffset16) * correction.spreadRatio +
                     correction.desiredOffset16);
      default:
        return whole(channel * correction.gain);
    }
  }
  static Channel keep(Channel value) noexcept { return whole(value); }
  static Channel tint(Channel value, int channel) noexcept {
    return static_cast<Channel>((value | kTint[channel]) >> 1);
  }

 private:
  static Channel whole(float value) noexcept { return static_cast<Channel>(clampChannel(value)); }
};

struct ArithmeticFloat {
  using Pixel = PF_PixelFloat;
  using Channel = float;
  static constexpr Channel kInk = 1.0f;
  static constexpr Channel kTint[3] = {0.060546f, 0.224609f, 0.449218f};

  static Channel correct(const FrameCorrection& correction, Channel value) noexcept {
    switch (correction.method) {
      case kCorrectionGamma:
        // Adding 0 makes a negative zero positive: the power goes by the sign bit too.
        return clampChannel(
            static_cast<float>(fastPower(double{value} + 0.0, correction.inverseGamma)));
      case kCorrectionShift:
        return clampChannel((value - correction.inputOffset) * correction.spreadRatio +
                            correction.desiredOffset);
      default:
        return clampChannel(value * correction.gain);
    }
  }
  static Channel keep(Channel value) noexcept { return clampChannel(value); }
  static Channel tint(Channel value, int channel) noexcept { return value * 0.5f + kTint[channel]; }
};

enum class BannerPart { outside, background, ink };

// count x offset / extent for offset < extent, in 32 bits where they suffice: it is much quicker.
std::uint32_t scaleDown(std::uint32_t count, std::uint32_t offset, std::uint32_t extent) noexcept {
  const std::uint64_t product = std::uint64_t{count} * offset;
  if (product <= UINT32_MAX) return static_cast<std::uint32_t>(product) / extent;
  return static_cast<std::uint32_t>(product / extent);
}

BannerPart bannerAt(const Rect& banner, std::int32_t x, std::int32_t y) noexcept {
  const std::int64_t width = std::int64_t{banner.right} - banner.left;
  const std::int64_t height = std::int64_t{banner.bottom} - banner.top;
  const std::int64_t dx = std::int64_t{x} - banner.left;
  const std::int64_t dy = std::int64_t{y} - banner.top;
  if (dx < 0 || dx >= width || dy < 0 || dy >= height) return BannerPart::outside;
  const std::uint32_t row =
      scaleDown(kBannerHeight, static_cast<std::uint32_t>(dy), static_cast<std::uint32_t>(height));
  const std::uint32_t column =
      scaleDown(kBannerWidth, static_cast<std::uint32_t>(dx), static_cast<std::uint32_t>(width));
  const std::uint8_t mask = kBannerMask.pixels[row * kBannerWidth + column];
  return mask != 0 ? BannerPart::ink : BannerPart::background;
}

template <class Arithmetic>
void drawUnanalyzed(const Rect& banner, std::int32_t x, std::int32_t y,
                    const typename Arithmetic::Pixel& in,
                    typename Arithmetic::Pixel& out) noexcept {
  const auto red = Arithmetic::keep(in.red);
  const auto green = Arithmetic::keep(in.green);
  const auto blue = Arithmetic::keep(in.blue);
  switch (bannerAt(banner, x, y)) {
    case BannerPart::outside:
      out = {in.alpha, red, green, blue};
      break;
    case BannerPart::background:
      out = {in.alpha, Arithmetic::tint(red, 0), Arithmetic::tint(green, 1),
             Arithmetic::tint(blue, 2)};
      break;
    case BannerPart::ink:
      out = {in.alpha, Arithmetic::kInk, Arithmetic::kInk, Arithmetic::kInk};
      break;
  }
}

template <class Arithmetic>
std::int32_t correctPixel(const void* context, std::int32_t x, std::int32_t y,
                          const typename Arithmetic::Pixel& in,
                          typename Arithmetic::Pixel& out) noexcept {
  if (context == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  const auto& correction = *static_cast<const FrameCorrection*>(context);
  if (!correction.analyzed) {
    drawUnanalyzed<Arithmetic>(correction.banner, x, y, in, out);
  } else if (correction.dontDeflicker) {
    out = in;
  } else {
    out = {in.alpha, Arithmetic::correct(correction, in.red),
           Arithmetic::correct(correction, in.green), Arithmetic::correct(correction, in.blue)};
  }
  return 0;
}

}  // namespace

void prepareCorrection(FrameCorrection& correction, const FrameLevels& levels) noexcept {
  const double input = levels.inputLuminance;
  const double desired = levels.desiredLuminance;
  const bool hasPower = levels.gammaValue >= kLeastGamma;
  if (correction.method == kCorrectionGamma && !hasPower) correction.method = kCorrectionLinear;
  correction.inverseGamma = hasPower ? 1.0 / double{levels.gammaValue} : 1.0;
  correction.gain = input > 0.0 ? static_cast<float>(desired / input) : 1.0f;
  correction.spreadRatio =
      levels.inputSpread > 0.0f ? levels.desiredSpread / levels.inputSpread : 1.0f;
  correction.inputOffset16 = static_cast<float>(input / 255.0 * kWhite16);
  correction.desiredOffset16 = static_cast<float>(desired / 255.0 * kWhite16);
  correction.inputOffset = static_cast<float>(input / 255.0);
  correction.desiredOffset = static_cast<float>(desired / 255.0);
}

std::int32_t correctPixel8(void* context, std::int32_t x, std::int32_t y, PF_Pixel* in,
                           PF_Pixel* out) noexcept {
  return correctPixel<Arithmetic8>(context, x, y, *in, *out);
}

std::int32_t correctPixel16(void* context, std::int32_t x, std::int32_t y, PF_Pixel16* in,
                            PF_Pixel16* out) noexcept {
  return correctPixel<Arithmetic16>(context, x, y, *in, *out);
}

std::int32_t correctPixelFloat(void* context, std::int32_t x, std::int32_t y, PF_PixelFloat* in,
                               PF_PixelFloat* out) noexcept {
  return correctPixel<ArithmeticFloat>(context, x, y, *in, *out);
}

}  // namespace varilum
