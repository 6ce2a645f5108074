// media/frame_index.h — which frames a clip has, when they are shown and from where to decode them.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "media/clip_info.h"
#include "media/input_file.h"

namespace media {

class FrameIndex {
 public:
  struct Entry {
    std::int64_t pts = 0;
    std::int64_t duration = 0;
    std::int64_t order = 0;  ///< of decoding
  };
  struct KeyFrame {
    std::int64_t pts = 0;
    std::int64_t dts = 0;
    std::int64_t order = 0;
  };

  /// Reads `input` to its end. Frames come from packets where the codec has one packet a frame with
  /// a time of its own, else from decoding everything.
  static FrameIndex build(InputFile& input, const ReadOptions& options);

  std::int64_t size() const noexcept { return static_cast<std::int64_t>(entries_.size()); }
  const Entry& at(std::int64_t index) const { return entries_[static_cast<std::size_t>(index)]; }

  /// False if frames cannot be told apart by time: then they are counted as they are decoded.
  bool timed() const noexcept { return timed_; }
  bool exact() const noexcept { return exact_; }

  /// The frame shown at `pts` or the last before it; nothing if `pts` is before frame 0.
  std::optional<std::int64_t> indexAt(std::int64_t pts) const noexcept;

  /// Key frames from which `index` can be decoded, as a position in keyFrames() of the nearest;
  /// -1 if it takes the start of the file.
  std::int64_t keyFor(std::int64_t index) const noexcept;
  const std::vector<KeyFrame>& keyFrames() const noexcept { return keys_; }

  /// Forgets frames before `index`, because they cannot be decoded.
  void dropBefore(std::int64_t index);
  /// Forgets frames from `size` on.
  void truncate(std::int64_t size);

  /// Frames per second from the timestamps, preferring the container's figures where they agree.
  Rational frameRate(const AVStream& stream) const;
  bool variableRate() const noexcept;
  std::int64_t endPts() const noexcept;

  /// Frames that the container promises beyond those that are there; 0 unless it was cut off.
  std::int64_t missingFrames(const AVFormatContext& context, const AVStream& stream) const;

 private:
  void takePackets(InputFile& input);
  void takeFrames(InputFile& input, const ReadOptions& options);
  void finish(const AVStream& stream, const ReadOptions& options);

  std::vector<Entry> entries_;
  std::vector<KeyFrame> keys_;
  std::int64_t packets_ = 0;  // read, those that show nothing too
  bool timed_ = true;
  bool exact_ = true;
};

}  // namespace media
