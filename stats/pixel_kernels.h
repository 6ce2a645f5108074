// stats/pixel_kernels.h — the functions that correct a pixel, as the host's iteration calls them.
#pragma once

#include <cstdint>

#include "hostapi/world.h"
#include "stats/banner_place.h"
#include "stats/frame_stats.h"

namespace varilum {

// What one frame needs, settled once before its pixels are visited. Plain data; the kernels only
// read it, so any number of threads may share one.
struct FrameCorrection {
  bool analyzed = false;             // every frame of the layer is; otherwise the banner is drawn
  bool dontDeflicker = false;        // colours pass unchanged
  std::uint8_t method = 1;           // 2 Shift, 3 Gamma, anything else Linear
  std::uint8_t table[kLevels] = {};  // 8-bit only
  BannerPlace banner;                // in output pixels
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

// The kernel of a frame. Its context is the FrameCorrection that it was chosen by; x, y in output
// pixels; input and output may be the same pixel. Result 0, or PF_Err_BAD_CALLBACK_PARAM without a
// context (the pixel is then not written). 8-bit goes through the table; 16-bit and float are
// computed and ignore it.
PF_IteratePixel8Func pixelKernel8(const FrameCorrection& correction) noexcept;
PF_IteratePixel16Func pixelKernel16(const FrameCorrection& correction) noexcept;
PF_IteratePixelFloatFunc pixelKernelFloat(const FrameCorrection& correction) noexcept;

// The same without vector instructions.
PF_IteratePixel16Func plainPixelKernel16(const FrameCorrection& correction) noexcept;
PF_IteratePixelFloatFunc plainPixelKernelFloat(const FrameCorrection& correction) noexcept;

}  // namespace varilum
