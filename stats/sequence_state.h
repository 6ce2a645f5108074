// stats/sequence_state.h — the effect instance's data: the header that the host keeps and saves.
//
// The header is saved byte for byte (see stats/flat_image.h): offsets never change. Packed to 4
// bytes like the records of stats/frame_stats.h, with the same rule for its doubles and handles.
#pragma once

#include <cstddef>
#include <cstdint>

#include "stats/frame_stats.h"

namespace varilum {

inline constexpr std::int32_t kFormatVersion = 14;
inline constexpr std::size_t kHeaderSize = 5196;
inline constexpr std::size_t kFrameStatsSize = sizeof(FrameStats);
inline constexpr std::size_t kHistogramCacheSize = kHistogramSlots * sizeof(FrameHistogram);
// More frames than this and the array of FrameStats outgrows its 32-bit size field.
inline constexpr std::int64_t kMaxFrames = 24'403'223;

// Values of PARAM_CORRECTION_METHOD and PARAM_DEFLICKER_METHOD.
inline constexpr std::uint8_t kCorrectionLinear = 1;
inline constexpr std::uint8_t kCorrectionShift = 2;
inline constexpr std::uint8_t kCorrectionGamma = 3;
inline constexpr std::int32_t kDeflickerKeyframes = 1;
inline constexpr std::int32_t kDeflickerSmoothing = 2;

// A host handle (address of a master pointer) as the header stores it.
using StoredHandle = std::uint64_t;

#pragma pack(push, 4)

struct SequenceState {
  std::int32_t layoutWord0;    // 4
  std::int32_t layoutWord1;    // 2
  std::int32_t formatVersion;  // 14
  std::int32_t frameCount;
  std::int32_t slotCount;             // 30
  std::uint32_t headerSize;           // 5196 in an image, 0 before
  std::uint32_t frameStatsBytes;      // frame count x 176
  StoredHandle frameStats;            // FrameStats[frame count]
  std::uint32_t histogramCacheBytes;  // 123000
  StoredHandle histogramCache;        // FrameHistogram[30]
  std::uint32_t levelArrayBytes;      // frame count x 8, of each of the four arrays below
  StoredHandle inputLuminance;        // double[frame count]; -1 = not analysed
  StoredHandle inputSpread;           // double[frame count]
  StoredHandle desiredLuminance;      // double[frame count]
  StoredHandle desiredSpread;         // double[frame count]
  std::uint8_t isFloat;               // the layer's pixels are 32-bit float
  std::uint8_t inputDeep;             // the input layer is 16-bit
  std::uint8_t outputDeep;            // the output is 16-bit
  std::uint8_t padding87;
  std::uint32_t allocatedBytes;  // asked for by the last resize
  std::uint32_t changeCounter;   // raised by every change that alters results
  std::uint8_t reserved96;
  std::uint8_t analysisComplete;          // every frame is analysed
  std::uint8_t recomputeDesired;          // targets must be computed again
  std::uint8_t flattened;                 // this copy is a flat image
  std::uint8_t refreshPending;            // Analyze was pressed and no render followed yet
  std::uint8_t correctionTable[kLevels];  // output level for each input level
  char statusText[256];                   // "%d of %d frames analyzed"
  std::uint8_t correctionMethod;          // of the last render
  std::uint8_t padding614[2];
  float gammaValue;              // of the last Gamma table
  std::int32_t deflickerMethod;  // of the last computation of targets
  double clippingPercent;
  std::uint8_t adjustClipping;
  std::uint8_t padding633[3];
  double frameDesiredLuminance;  // these four: of the frame rendered last
  double frameInputLuminance;
  float frameDesiredSpread;
  float frameInputSpread;
  double currentGain;
  double smallestGain;
  double largestGain;
  double inputVariance;
  double outputVariance;
  Rect panelRect;  // this and down to histogramSource: the panel's
  Rect plotRect;
  Rect inputMarkerRect;
  Rect desiredHandleRect;
  double currentInput;
  double currentDesired;
  float currentSpread;
  float copiedSpread;
  std::int32_t redrawCounter;
  std::uint32_t useCounter;
  std::uint8_t histogramSource;
  std::uint8_t carried797[15];
  Rect banner;              // "press Analyze first", in output pixels
  FrameStats currentStats;  // of the frame in hand
  FrameHistogram currentHistogram;
  std::uint8_t carried5104[92];
};

#pragma pack(pop)

static_assert(sizeof(SequenceState) == kHeaderSize);
#define VARILUM_AT(field, offset) static_assert(offsetof(SequenceState, field) == (offset))
VARILUM_AT(formatVersion, 8);
VARILUM_AT(frameCount, 12);
VARILUM_AT(slotCount, 16);
VARILUM_AT(headerSize, 20);
VARILUM_AT(frameStatsBytes, 24);
VARILUM_AT(frameStats, 28);
VARILUM_AT(histogramCacheBytes, 36);
VARILUM_AT(histogramCache, 40);
VARILUM_AT(levelArrayBytes, 48);
VARILUM_AT(inputLuminance, 52);
VARILUM_AT(inputSpread, 60);
VARILUM_AT(desiredLuminance, 68);
VARILUM_AT(desiredSpread, 76);
VARILUM_AT(isFloat, 84);
VARILUM_AT(inputDeep, 85);
VARILUM_AT(outputDeep, 86);
VARILUM_AT(allocatedBytes, 88);
VARILUM_AT(changeCounter, 92);
VARILUM_AT(reserved96, 96);
VARILUM_AT(analysisComplete, 97);
VARILUM_AT(recomputeDesired, 98);
VARILUM_AT(flattened, 99);
VARILUM_AT(refreshPending, 100);
VARILUM_AT(correctionTable, 101);
VARILUM_AT(statusText, 357);
VARILUM_AT(correctionMethod, 613);
VARILUM_AT(gammaValue, 616);
VARILUM_AT(deflickerMethod, 620);
VARILUM_AT(clippingPercent, 624);
VARILUM_AT(adjustClipping, 632);
VARILUM_AT(frameDesiredLuminance, 636);
VARILUM_AT(frameInputLuminance, 644);
VARILUM_AT(frameDesiredSpread, 652);
VARILUM_AT(frameInputSpread, 656);
VARILUM_AT(currentGain, 660);
VARILUM_AT(smallestGain, 668);
VARILUM_AT(largestGain, 676);
VARILUM_AT(inputVariance, 684);
VARILUM_AT(outputVariance, 692);
VARILUM_AT(panelRect, 700);
VARILUM_AT(plotRect, 716);
VARILUM_AT(inputMarkerRect, 732);
VARILUM_AT(desiredHandleRect, 748);
VARILUM_AT(currentInput, 764);
VARILUM_AT(currentDesired, 772);
VARILUM_AT(currentSpread, 780);
VARILUM_AT(copiedSpread, 784);
VARILUM_AT(redrawCounter, 788);
VARILUM_AT(useCounter, 792);
VARILUM_AT(histogramSource, 796);
VARILUM_AT(banner, 812);
VARILUM_AT(currentStats, 828);
VARILUM_AT(currentHistogram, 1004);
VARILUM_AT(carried5104, 5104);
#undef VARILUM_AT

// A state as a new instance starts with it: creation values, no frames, no arrays.
SequenceState freshSequenceState() noexcept;

}  // namespace varilum
