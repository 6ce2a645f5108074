// cli/shots/shot_frames.cpp — which frames of the clip a shot holds, and which picture each of them
// shows.
#include "cli/shots/shot_frames.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>

namespace cli {

ShotFrames::ShotFrames(std::int64_t first, std::int64_t count, std::vector<std::int64_t> duplicates)
    : first_(first), count_(count), duplicates_(std::move(duplicates)) {
  constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
  if (first < 0 || first > kMost || count < 1 || count > kMost) {
    throw std::invalid_argument("a shot's frames are out of range");
  }
  std::int64_t before = first_;
  for (const std::int64_t duplicate : duplicates_) {
    if (duplicate <= before || duplicate > last()) {
      throw std::invalid_argument("a duplicate is out of range");
    }
    before = duplicate;
  }
}

std::int32_t ShotFrames::pictureCount() const noexcept {
  return static_cast<std::int32_t>(count_ - static_cast<std::int64_t>(duplicates_.size()));
}

std::int32_t ShotFrames::pictureOf(std::int64_t frame) const noexcept {
  const auto upTo = std::upper_bound(duplicates_.begin(), duplicates_.end(), frame);
  return static_cast<std::int32_t>(frame - first_ - (upTo - duplicates_.begin()));
}

std::int64_t ShotFrames::frameOf(std::int32_t picture) const noexcept {
  std::int64_t low = first_;
  std::int64_t high = last();
  while (low < high) {
    const std::int64_t middle = low + (high - low) / 2;
    if (pictureOf(middle) < picture) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

}  // namespace cli
