// stats/frame_stats.h — what is kept of each measured frame.
//
// These records are saved byte for byte with the user's project: offsets never change. They are
// packed to 4 bytes, so doubles in them are only 4-byte aligned: read and write fields by value,
// never through a kept pointer or reference.
#pragma once

#include <cstddef>
#include <cstdint>

namespace varilum {

inline constexpr int kLevels = 256;           // luminance and channel levels 0..255
inline constexpr int kHistogramSlots = 30;    // frames whose histograms are kept
inline constexpr double kNotAnalyzed = -1.0;  // in a per-frame array of levels

#pragma pack(push, 4)

// Histograms of one frame; bin = level.
struct FrameHistogram {
  std::int32_t frame;  // frame index held; -1 = none
  std::uint32_t luminance[kLevels];
  std::uint32_t red[kLevels];
  std::uint32_t green[kLevels];
  std::uint32_t blue[kLevels];
};

// Pixel rectangle, right and bottom exclusive.
struct Rect {
  std::int32_t left;
  std::int32_t top;
  std::int32_t right;
  std::int32_t bottom;

  friend bool operator==(const Rect&, const Rect&) = default;
};

// Statistics of one frame. Levels on the 0..255 scale.
struct FrameStats {
  std::int32_t frame;          // frame index; -1 = none
  std::int32_t slot;           // HistogramCache slot with its histograms; -1 = none
  std::uint8_t analyzed;       // 1: computed from at least one pixel, or passed over on purpose
  std::uint8_t walked;         // 1: step and rect below belong to a finished walk
  std::uint16_t padding;       // 0
  std::int32_t pixelCount;     // sampled pixels
  std::int32_t belowTopCount;  // of them, those with luminance below 255
  std::int32_t peak;           // largest count in luminance bins 1..254
  std::int32_t luminanceSum;   // saturated to 32 bits
  std::int32_t totalPixels;    // width x height of the buffer
  double inputLuminance;       // the frame's level
  double inputSpread;          // mean absolute deviation of luminance from it
  std::uint8_t carried48[16];  // kept as loaded
  std::uint32_t step;          // sampling step used
  std::uint32_t carried68;     // kept as loaded
  Rect rect;                   // rectangle walked, clamped to the buffer
  std::int32_t width;          // of the buffer
  std::int32_t height;
  std::uint8_t carried96[80];  // kept as loaded
};

#pragma pack(pop)

static_assert(sizeof(FrameHistogram) == 4100 && offsetof(FrameHistogram, luminance) == 4 &&
              offsetof(FrameHistogram, red) == 1028 && offsetof(FrameHistogram, green) == 2052 &&
              offsetof(FrameHistogram, blue) == 3076);
static_assert(sizeof(FrameStats) == 176 && offsetof(FrameStats, slot) == 4 &&
              offsetof(FrameStats, analyzed) == 8 && offsetof(FrameStats, walked) == 9 &&
              offsetof(FrameStats, pixelCount) == 12 && offsetof(FrameStats, belowTopCount) == 16 &&
              offsetof(FrameStats, peak) == 20 && offsetof(FrameStats, luminanceSum) == 24 &&
              offsetof(FrameStats, totalPixels) == 28 &&
              offsetof(FrameStats, inputLuminance) == 32 &&
              offsetof(FrameStats, inputSpread) == 40 && offsetof(FrameStats, step) == 64 &&
              offsetof(FrameStats, rect) == 72 && offsetof(FrameStats, width) == 88 &&
              offsetof(FrameStats, height) == 92 && offsetof(FrameStats, carried96) == 96);

// Makes a record fresh: no frame, no slot, everything else 0.
inline void resetFrameStats(FrameStats& stats) noexcept {
  stats = FrameStats{};
  stats.frame = -1;
  stats.slot = -1;
}

// Makes a histogram fresh: no frame, all bins 0.
inline void resetFrameHistogram(FrameHistogram& histogram) noexcept {
  histogram = FrameHistogram{};
  histogram.frame = -1;
}

}  // namespace varilum
