// cli/shots/shot_frames.h — which frames of the clip a shot holds, and which picture each of them
// shows.
#pragma once

#include <cstdint>
#include <vector>

namespace cli {

/// Consecutive frames of the clip. The layer that the effect sees holds each distinct picture of
/// them once, in order: pictures count from 0 in the shot, frames from 0 in the clip. A duplicate
/// shows the picture of the frame before it.
class ShotFrames {
 public:
  ShotFrames() = default;
  /// `duplicates`: frames, rising, after the first and up to the last. Throws std::invalid_argument
  /// when they are not, or when there are less than one frame or more than 2^31 - 1.
  ShotFrames(std::int64_t first, std::int64_t count, std::vector<std::int64_t> duplicates = {});

  std::int64_t first() const noexcept { return first_; }
  std::int64_t last() const noexcept { return first_ + count_ - 1; }
  std::int64_t count() const noexcept { return count_; }
  const std::vector<std::int64_t>& duplicates() const noexcept { return duplicates_; }
  std::int32_t pictureCount() const noexcept;
  bool holds(std::int64_t frame) const noexcept { return frame >= first_ && frame <= last(); }

  /// The picture that a frame of the shot shows; never falls as frames rise.
  std::int32_t pictureOf(std::int64_t frame) const noexcept;
  /// The first frame that shows a picture, 0 <= picture < pictureCount().
  std::int64_t frameOf(std::int32_t picture) const noexcept;
  /// The frame that a frame of the shot repeats: itself unless it is a duplicate.
  std::int64_t originalOf(std::int64_t frame) const noexcept { return frameOf(pictureOf(frame)); }

  friend bool operator==(const ShotFrames&, const ShotFrames&) = default;

 private:
  std::int64_t first_ = 0;
  std::int64_t count_ = 1;
  std::vector<std::int64_t> duplicates_;
};

}  // namespace cli
