// stats/pixel_walk_kernels.h — the walk's inner loops over pieces of a row, and who has them.
#pragma once

#include <cstddef>
#include <cstdint>

namespace varilum {

// Levels of one pixel: red in bits 8..15, green in 16..23, blue in 24..31, as 8-bit pixels lie in
// memory when read as one little-endian number. Bits 0..7 mean nothing.
using LevelWord = std::uint32_t;

constexpr LevelWord packLevels(unsigned red, unsigned green, unsigned blue) noexcept {
  return red << 8 | green << 16 | blue << 24;
}

inline constexpr int kWalkPiece = 256;  // pixels that a kernel takes at most
inline constexpr int kWalkBlock = 16;   // kernels take whole blocks of pixels

// Green and luminance are counted together: a level of green leaves luminance less than 105 levels
// of room, (0.3 + 0.11) x 255 and the rounding, so 105 x green + luminance tells all pairs apart.
inline constexpr int kGreenStride = 105;
inline constexpr int kGreenPairs = kGreenStride * 255 + 255 + 1;

// Red and blue: 256 x red + blue.
inline constexpr int kRedBluePairs = 256 * 256;

// A piece of a row, made ready for counting.
struct WalkPairs {
  std::uint16_t greenLuminance[kWalkPiece];     // kGreenStride x green + luminance, ties rounded up
  std::uint16_t redBlue[kWalkPiece];            // 256 x red + blue
  std::uint16_t ties[kWalkPiece / kWalkBlock];  // bit a pixel: luminance lies between two levels
};

// One way to do it. count: pixels, a multiple of kWalkBlock, at most kWalkPiece; all of them are
// read. Pixels may lie at any address.
struct WalkKernels {
  const char* name;
  // Indexes and ties of 8-bit pixels or LevelWords.
  void (*pair)(const std::byte* pixels, int count, WalkPairs& pairs);
  // Levels of 16-bit and float pixels; see walkPixels for the rule.
  void (*read16)(const std::byte* pixels, int count, LevelWord* words);
  void (*readFloat)(const std::byte* pixels, int count, LevelWord* words);
};

extern const WalkKernels kPlainWalk;
#if defined(__x86_64__)
extern const WalkKernels kSse2Walk;  // every x86-64 processor
extern const WalkKernels kAvx2Walk;  // only where canRunAvx2Walk()
bool canRunAvx2Walk() noexcept;
#endif

// The quickest that this processor runs; chosen when the library is loaded.
const WalkKernels& bestWalkKernels() noexcept;

}  // namespace varilum
