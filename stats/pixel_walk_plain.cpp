// stats/pixel_walk_plain.cpp — the walk's kernels for any processor.
#include "stats/luminance.h"
#include "stats/pixel_walk_kernels.h"
#include "stats/pixel_walk_levels.h"

namespace varilum {
namespace {

void pairPlain(const std::byte* pixels, int count, WalkPairs& pairs) {
  for (int i = 0; i < count; ++i) {
    const LevelWord word = Read8::levels(pixels + std::size_t{Read8::kBytes} * unsigned(i));
    const auto red = static_cast<std::uint8_t>(word >> 8);
    const auto green = static_cast<std::uint8_t>(word >> 16);
    const auto blue = static_cast<std::uint8_t>(word >> 24);
    pairs.greenLuminance[i] =
        static_cast<std::uint16_t>(kGreenStride * green + luminanceLevel(red, green, blue));
    pairs.redBlue[i] = static_cast<std::uint16_t>(256 * red + blue);
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

const WalkKernels kPlainWalk = {"plain", pairPlain, read<Read16>, read<ReadFloat>};

}  // namespace varilum
