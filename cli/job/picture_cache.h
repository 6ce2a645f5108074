// cli/job/picture_cache.h — decoded pictures kept in memory, so that a clip is decoded once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <unordered_map>

#include "media/picture.h"

namespace cli {

/// Pictures in their file's own pixel format, by their index. Those that come first stay: a clip is
/// gone through from front to back again and again, and dropping the oldest for the newest would
/// then never find anything. Any thread.
class PictureCache {
 public:
  /// `budget`: bytes of pixel memory that may be kept; 0 keeps nothing.
  explicit PictureCache(std::uint64_t budget) : budget_(budget) {}

  /// The picture of a frame, if it is kept.
  std::optional<media::Picture> find(std::int64_t frame) const;

  /// Keeps a picture under its index if there is room.
  void offer(const media::Picture& picture);

  /// Bytes kept.
  std::uint64_t size() const;

 private:
  const std::uint64_t budget_;
  mutable std::mutex mutex_;
  std::unordered_map<std::int64_t, media::Picture> pictures_;
  std::uint64_t size_ = 0;
};

}  // namespace cli
