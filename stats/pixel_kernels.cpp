// stats/pixel_kernels.cpp — one function a depth and a kind of frame, and the choice between them.
#include "stats/pixel_kernels.h"

#include <bit>

#include "hostapi/commands.h"
#include "stats/pixel_lanes_plain.h"
#include "stats/sequence_state.h"
#if defined(__SSE2__)
#include "stats/x86/pixel_lanes_sse2.h"
#endif

namespace varilum {
namespace {

#if defined(__SSE2__)
using BestLanes = Sse2Lanes;
#else
using BestLanes = PlainLanes;
#endif

constexpr double kWhite16 = 32767.0;  // one below the host's white, and so it stays
constexpr double kLeastGamma = 0.01;

// What each depth does to a channel of a frame that is not analysed: keep it, and tint it under the
// banner, each by its own rule. kTint: red, green, blue.
struct Depth8 {
  using Pixel = PF_Pixel;
  using Channel = std::uint8_t;
  static constexpr Channel kInk = 255;
  static constexpr Channel kTint[3] = {15, 57, 115};

  static Channel keep(Channel value) noexcept { return value; }
  static Channel tint(Channel value, int channel) noexcept {
    return static_cast<Channel>((value >> 1) + kTint[channel]);
  }
};

struct Depth16 {
  using Pixel = PF_Pixel16;
  using Channel = std::uint16_t;
  static constexpr Channel kInk = 65535;
  static constexpr Channel kTint[3] = {0x1FFE, 0x73FE, 0xE6FF};
  static constexpr double kWhite = kWhite16;

  static Channel keep(Channel value) noexcept {
    return static_cast<Channel>(clampChannel(static_cast<float>(value)));
  }
  static Channel tint(Channel value, int channel) noexcept {
    return static_cast<Channel>((value | kTint[channel]) >> 1);
  }
  static float inputOffset(const FrameCorrection& correction) { return correction.inputOffset16; }
  static float desiredOffset(const FrameCorrection& correction) {
    return correction.desiredOffset16;
  }
};

struct DepthFloat {
  using Pixel = PF_PixelFloat;
  using Channel = float;
  static constexpr Channel kInk = 1.0f;
  static constexpr Channel kTint[3] = {0.060546f, 0.224609f, 0.449218f};
  static constexpr double kWhite = 1.0;

  static Channel keep(Channel value) noexcept { return clampChannel(value); }
  static Channel tint(Channel value, int channel) noexcept { return value * 0.5f + kTint[channel]; }
  static float inputOffset(const FrameCorrection& correction) { return correction.inputOffset; }
  static float desiredOffset(const FrameCorrection& correction) { return correction.desiredOffset; }
};

// What is done to the pixels of a frame: one of these.

template <class Depth>
struct PaintBanner {
  using Pixel = typename Depth::Pixel;
  static void apply(const FrameCorrection& correction, std::int32_t x, std::int32_t y,
                    const Pixel& in, Pixel& out) noexcept {
    const auto red = Depth::keep(in.red);
    const auto green = Depth::keep(in.green);
    const auto blue = Depth::keep(in.blue);
    switch (correction.banner.at(x, y)) {
      case BannerPart::outside:
        out = {in.alpha, red, green, blue};
        break;
      case BannerPart::background:
        out = {in.alpha, Depth::tint(red, 0), Depth::tint(green, 1), Depth::tint(blue, 2)};
        break;
      case BannerPart::ink:
        out = {in.alpha, Depth::kInk, Depth::kInk, Depth::kInk};
        break;
    }
  }
};

template <class Depth>
struct Keep {
  using Pixel = typename Depth::Pixel;
  static void apply(const FrameCorrection&, std::int32_t, std::int32_t, const Pixel& in,
                    Pixel& out) noexcept {
    out = in;
  }
};

struct LookUp {
  using Pixel = PF_Pixel;
  static void apply(const FrameCorrection& correction, std::int32_t, std::int32_t, const Pixel& in,
                    Pixel& out) noexcept {
    // Read and written as one number: four single bytes would cost four stores.
    const auto pixel = std::bit_cast<std::uint32_t>(in);
    const auto level = [&](int bit) {
      return std::uint32_t{correction.table[pixel >> bit & 255]} << bit;
    };
    out = std::bit_cast<Pixel>((pixel & 255) | level(8) | level(16) | level(24));
  }
};

template <class Lanes, class Depth>
struct Scale {
  using Pixel = typename Depth::Pixel;
  static void apply(const FrameCorrection& correction, std::int32_t, std::int32_t, const Pixel& in,
                    Pixel& out) noexcept {
    Lanes::load(in).times(correction.gain).store(in.alpha, out);
  }
};

template <class Lanes, class Depth>
struct Shift {
  using Pixel = typename Depth::Pixel;
  static void apply(const FrameCorrection& correction, std::int32_t, std::int32_t, const Pixel& in,
                    Pixel& out) noexcept {
    Lanes::load(in)
        .minus(Depth::inputOffset(correction))
        .times(correction.spreadRatio)
        .plus(Depth::desiredOffset(correction))
        .store(in.alpha, out);
  }
};

template <class Lanes, class Depth>
struct Raise {
  using Pixel = typename Depth::Pixel;
  static void apply(const FrameCorrection& correction, std::int32_t, std::int32_t, const Pixel& in,
                    Pixel& out) noexcept {
    Lanes::load(in).raised(correction.inverseGamma, Depth::kWhite).store(in.alpha, out);
  }
};

template <class Pixel>
using Kernel = std::int32_t (*)(void*, std::int32_t, std::int32_t, Pixel*, Pixel*);

template <class Work>
std::int32_t kernel(void* context, std::int32_t x, std::int32_t y, typename Work::Pixel* in,
                    typename Work::Pixel* out) noexcept {
  if (context == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  Work::apply(*static_cast<const FrameCorrection*>(context), x, y, *in, *out);
  return 0;
}

template <class Lanes, class Depth>
Kernel<typename Depth::Pixel> deepKernel(const FrameCorrection& correction) noexcept {
  if (!correction.analyzed) return kernel<PaintBanner<Depth>>;
  if (correction.dontDeflicker) return kernel<Keep<Depth>>;
  switch (correction.method) {
    case kCorrectionGamma:
      return kernel<Raise<Lanes, Depth>>;
    case kCorrectionShift:
      return kernel<Shift<Lanes, Depth>>;
    default:
      return kernel<Scale<Lanes, Depth>>;
  }
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

PF_IteratePixel8Func pixelKernel8(const FrameCorrection& correction) noexcept {
  if (!correction.analyzed) return kernel<PaintBanner<Depth8>>;
  return correction.dontDeflicker ? kernel<Keep<Depth8>> : kernel<LookUp>;
}

PF_IteratePixel16Func pixelKernel16(const FrameCorrection& correction) noexcept {
  return deepKernel<BestLanes, Depth16>(correction);
}

PF_IteratePixelFloatFunc pixelKernelFloat(const FrameCorrection& correction) noexcept {
  return deepKernel<BestLanes, DepthFloat>(correction);
}

PF_IteratePixel16Func plainPixelKernel16(const FrameCorrection& correction) noexcept {
  return deepKernel<PlainLanes, Depth16>(correction);
}

PF_IteratePixelFloatFunc plainPixelKernelFloat(const FrameCorrection& correction) noexcept {
  return deepKernel<PlainLanes, DepthFloat>(correction);
}

}  // namespace varilum
