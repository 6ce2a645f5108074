// stats/pixel_kernels.h — the functions that correct one pixel, as the host's iteration calls them.
#pragma once

#include <cstdint>

#include "hostapi/world.h"
#include "stats/frame_stats.h"

namespace varilum {

// What one frame needs, settled once before its pixels are visited. Plain data; the kernels only
// read it, so any number of threads may share one.
struct FrameCorrection {
  bool analyzed = false;             // every frame of the layer is; otherwise the banner is drawn
  bool dontDeflicker = false;        // colours pass unchanged
  std::uint8_t method = 1;           // 2 Shift, 3 Gamma, anything else Linear
  std::uint8_t table[kLevels] = {};  // 8-bit only
  Rect banner{};                     // in output pixels
  // From the values below, by prepareCorrection:
  double inverseGamma = 1.0;
  float gain = 1.0f;         // Linear
  float spreadRatio = 1.0f;  // Shift
  float inputOffset16 = 0.0f;
  float desiredOffset16 = 0.0f;
  float inputOffset = 0.0f;  // float pixels
  float desiredOffset = 0.0f;
};

// Levels of the frame, on the 0..255 scale, from which the factors above follow.
struct FrameLevels {
  double desiredLuminance = 0.0;
  double inputLuminance = 0.0;
  float desiredSpread = 0.0f;
  float inputSpread = 0.0f;
  float gammaValue = 1.0f;
};

// Fills the factors of correction from levels. Gamma below 0.01 is corrected as Linear, which the
// method then says.
void prepareCorrection(FrameCorrection& correction, const FrameLevels& levels) noexcept;

// The kernels: context is a FrameCorrection; x, y in output pixels. Result 0, or
// PF_Err_BAD_CALLBACK_PARAM without a context (the pixel is then not written).
// 8-bit goes through the table; 16-bit and float are computed and ignore it.
std::int32_t correctPixel8(void* context, std::int32_t x, std::int32_t y, PF_Pixel* in,
                           PF_Pixel* out) noexcept;
std::int32_t correctPixel16(void* context, std::int32_t x, std::int32_t y, PF_Pixel16* in,
                            PF_Pixel16* out) noexcept;
std::int32_t correctPixelFloat(void* context, std::int32_t x, std::int32_t y, PF_PixelFloat* in,
                               PF_PixelFloat* out) noexcept;

}  // namespace varilum
