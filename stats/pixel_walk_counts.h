// stats/pixel_walk_counts.h — counts of levels while a walk is under way.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "stats/frame_stats.h"
#include "stats/pixel_walk_kernels.h"

namespace varilum {

// What bounds a walk is the number of counts it stores, so channels share them: green with
// luminance, and red with blue where there are enough pixels to pay for clearing and adding up
// their 256 KB. About 114 KB otherwise, made to live on the stack for the length of a walk.
class WalkCounts {
 public:
  // samples: how many pixels will be added. Red and blue are also counted apart when there is no
  // memory for their table; the counts are the same.
  explicit WalkCounts(std::int64_t samples) noexcept;

  // Pixels of at most a piece: 8-bit ones or LevelWords, at any address. Reads count of them,
  // rounded up to whole blocks.
  void add(const WalkKernels& kernels, const std::byte* pixels, int count) noexcept;

  void addTo(FrameHistogram& histogram) const noexcept;

 private:
  // Equal neighbours take turns in two tables, so as not to wait for each other's counts. Padded by
  // a cache line: equal bins of two tables never share a set.
  static constexpr int kTurns = 2;
  static constexpr int kGroup = 32;  // pixels looked at for a common colour
  using Channel = std::uint32_t[kLevels + 16];

  void addColour(LevelWord word, std::uint32_t count) noexcept;
  void addPairs(const WalkPairs& pairs, int from, int to) noexcept;
  template <class CountRedBlue>
  void addPairs(const WalkPairs& pairs, int from, int to, CountRedBlue countRedBlue) noexcept;

  std::uint32_t greenLuminance_[kGreenPairs] = {};
  Channel red_[kTurns] = {};
  Channel blue_[kTurns] = {};
  std::unique_ptr<std::uint32_t[]> redBlue_;  // kRedBluePairs, or null
};

}  // namespace varilum
