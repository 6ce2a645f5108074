// cli/job/picture_queue.cpp — decoding ahead of the work, on a thread of its own.
#include "cli/job/picture_queue.h"

namespace cli {

PictureQueue::PictureQueue(media::ClipReader& reader, std::int64_t first, std::int64_t last,
                           std::size_t ahead)
    : reader_(reader), next_(first), last_(last), ahead_(ahead), thread_([this] { run(); }) {}

PictureQueue::~PictureQueue() {
  {
    const std::lock_guard lock(mutex_);
    stop_ = true;
  }
  changed_.notify_all();
  thread_.join();
}

void PictureQueue::run() {
  std::exception_ptr error;
  try {
    if (reader_.position() != next_) reader_.seek(next_);
    for (; next_ <= last_; ++next_) {
      std::optional<media::Picture> picture = reader_.next();
      if (!picture) break;
      std::unique_lock lock(mutex_);
      changed_.wait(lock, [this] { return stop_ || waiting_.size() < ahead_; });
      if (stop_) return;
      waiting_.push_back(std::move(*picture));
      changed_.notify_all();
    }
  } catch (...) {
    error = std::current_exception();
  }
  {
    const std::lock_guard lock(mutex_);
    error_ = error;
    ended_ = true;
  }
  changed_.notify_all();
}

std::optional<media::Picture> PictureQueue::pop() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return ended_ || !waiting_.empty(); });
  if (waiting_.empty()) {
    if (error_) std::rethrow_exception(error_);
    return {};
  }
  media::Picture picture = std::move(waiting_.front());
  waiting_.pop_front();
  changed_.notify_all();
  return picture;
}

}  // namespace cli
