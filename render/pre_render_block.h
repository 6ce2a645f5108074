// render/pre_render_block.h — what SMART_PRE_RENDER settles for the SMART_RENDER of its frame.
#pragma once

#include <cstdint>

#include "stats/frame_stats.h"
#include "stats/pixel_kernels.h"

namespace varilum {

// The input layer as checked out for the frame; SMART_RENDER asks for its pixels by this number.
constexpr std::int32_t kInputCheckout = 0;

// In a host handle that the host disposes; never saved. One for each pre-render.
struct PreRenderBlock {
  std::uint8_t ready;  // 1 when all of it was filled in
  std::uint8_t analysisComplete;
  std::uint8_t correctionTable[kLevels];
  Rect banner;  // these two: by SMART_RENDER, in output pixels
  Rect corner;
  float desiredSpread;
  float inputSpread;
  double desiredLuminance;
  double inputLuminance;
  std::uint8_t dontDeflicker;
  std::uint8_t adjustClipping;
  double clippingPercent;  // the parameter's raw 16.16 value
  std::uint8_t correctionMethod;
  std::uint8_t deflickerMethod;
  float gammaValue;      // of the table when it is a Gamma table, else 1
  std::int32_t counter;  // the hidden counter of edits; part of the host's cache key
};

// What the kernels need, from a block whose banner is known.
inline FrameCorrection correctionOf(const PreRenderBlock& block) noexcept {
  FrameCorrection correction;
  correction.analyzed = block.analysisComplete != 0;
  correction.dontDeflicker = block.dontDeflicker != 0;
  correction.method = block.correctionMethod;
  for (int level = 0; level < kLevels; ++level) {
    correction.table[level] = block.correctionTable[level];
  }
  correction.banner = placeBanner(block.banner);
  prepareCorrection(correction, {block.desiredLuminance, block.inputLuminance, block.desiredSpread,
                                 block.inputSpread, block.gammaValue});
  return correction;
}

}  // namespace varilum
