// cli/job/picture_cache.cpp — decoded pictures kept in memory, so that a clip is decoded once.
#include "cli/job/picture_cache.h"

namespace cli {

std::optional<media::Picture> PictureCache::find(std::int64_t frame) const {
  const std::lock_guard lock(mutex_);
  const auto found = pictures_.find(frame);
  if (found == pictures_.end()) return {};
  return found->second;
}

void PictureCache::offer(const media::Picture& picture) {
  const std::uint64_t bytes = picture.bytes();
  const std::lock_guard lock(mutex_);
  if (bytes > budget_ - size_) return;
  if (pictures_.try_emplace(picture.index(), picture).second) size_ += bytes;
}

std::uint64_t PictureCache::size() const {
  const std::lock_guard lock(mutex_);
  return size_;
}

}  // namespace cli
