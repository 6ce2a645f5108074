// stats/pixel_walk_plain.cpp — the walk's kernels for any processor.
#include "stats/luminance.h"
#include "stats/pixel_walk_kernels.h"
#include "stats/pixel_walk_levels.h"

namespace varilum {
namespace {

void pair(const std::byte* pixels, int count, WalkPairs& pairs) {
  for (int i = 0; i < count; ++i) {
    const LevelWord word = Read8::levels(pixels + std::size_t{Read8::kBytes} * unsigned(i));
    const auto green = static_cast<std::uint8_t>(word >> 16);
    const std::uint8_t luminance = luminanceLevel(static_cast<std::uint8_t>(word >> 8), green,
                                                  static_cast<std::uint8_t>(word >> 24));
    pairs.index[i] = static_cast<std::uint16_t>(kGreenStride * green + luminance);
  }
  for (int block = 0; block < count / kWalkBlock; ++block) pairs.ties[block] = 0;  // all settled
}

template <class Read>
void read(const std::byte* pixels, int count, LevelWord* words) {
  for (int i = 0; i < count; ++i) {
    words[i] = Read::levels(pixels + std::size_t{Read::kBytes} * unsigned(i));
  }
}

}  // namespace

const WalkKernels kPlainWalk = {"plain", pair, read<Read16>, read<ReadFloat>};

}  // namespace varilum
