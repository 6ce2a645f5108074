// cli/job/picture_queue.h — decoding ahead of the work, on a thread of its own.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>

#include "media/clip_reader.h"

namespace cli {

/// Reads frames first..last of a clip in order, at most `ahead` of them waiting. The reader must
/// not be used by others until the queue is gone.
class PictureQueue {
 public:
  static constexpr std::size_t kAhead = 4;

  PictureQueue(media::ClipReader& reader, std::int64_t first, std::int64_t last,
               std::size_t ahead = kAhead);
  ~PictureQueue();
  PictureQueue(const PictureQueue&) = delete;
  PictureQueue& operator=(const PictureQueue&) = delete;

  /// The next picture; nothing after the last one or where the clip breaks off. Throws what
  /// decoding threw. One thread.
  std::optional<media::Picture> pop();

 private:
  void run();

  media::ClipReader& reader_;
  std::int64_t next_;
  std::int64_t last_;
  std::size_t ahead_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<media::Picture> waiting_;
  std::exception_ptr error_;
  bool ended_ = false;
  bool stop_ = false;
  std::thread thread_;
};

}  // namespace cli
