// media/clip_reader.h — footage in: clips and numbered pictures, frame by frame or by index.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "media/clip_info.h"
#include "media/error.h"
#include "media/picture.h"

namespace media {

struct ReadOptions {
  std::optional<int> startNumber{};     ///< first file of a sequence; else the lowest that is there
  std::optional<Rational> frameRate{};  ///< of a sequence (24 unless given) or an untimed stream
  int threads = 0;                      ///< decoder threads; 0: one a core
};

/// One open clip. `path` is anything FFmpeg reads, a numbered pattern ("shot.%05d.png"), a pattern
/// with a star ("shot*.png") or a folder that holds one numbered sequence.
///
/// Opening reads through the file's packets once, without decoding them where the codec allows, so
/// that the number and times of all frames are known (24 bytes a frame are kept).
///
/// Frames are counted in presentation order. A frame that cannot be decoded in the midst is
/// replaced by its neighbour (Picture::isSubstitute) so that indices never shift; where the file
/// breaks off for good, next() ends early and warnings() says so.
///
/// Not thread-safe: one thread at a time; several readers of one file are independent.
class ClipReader {
 public:
  /// Throws Error: missing, notVideo, empty, unsupported, badOption.
  explicit ClipReader(const std::string& path, ReadOptions options = {});
  ~ClipReader();
  ClipReader(ClipReader&&) noexcept;
  ClipReader& operator=(ClipReader&&) noexcept;

  const ClipInfo& info() const noexcept;
  const ReadOptions& options() const noexcept;
  std::int64_t frameCount() const noexcept { return info().frameCount; }

  /// The frame at position(), which then moves on by one; nothing at the end.
  std::optional<Picture> next();

  /// Index that next() will return.
  std::int64_t position() const noexcept;

  /// Moves to `index` (0..frameCount; frameCount is the end). Throws Error{badOption} outside.
  void seek(std::int64_t index);

  /// seek(index) and next() in one. Past a place where the file breaks off it gives the last frame
  /// that decodes, as a substitute. Throws Error{badOption} outside 0..frameCount-1.
  Picture frameAt(std::int64_t index);

  /// Start of frame `index` in ClipInfo::timeBase ticks; `frameCount` gives the clip's end.
  std::int64_t ptsOf(std::int64_t index) const;

  /// Plain sentences about what is wrong with the footage, known so far; grows while reading.
  const std::vector<std::string>& warnings() const noexcept;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace media
