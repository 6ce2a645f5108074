// cli/job/clip_source.h — a clip as the layer that the effect is applied to.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

#include "cli/job/frame_level.h"
#include "cli/job/picture_cache.h"
#include "cli/job/picture_queue.h"
#include "cli/job/worker_pool.h"
#include "host/frame_source.h"
#include "media/clip_reader.h"

namespace cli {

/// A clip as named on the command line.
struct ClipOptions {
  std::string path;
  media::ReadOptions read;
};

/// Thrown where the clip has fewer frames than it announces.
class ClipBreaksOff : public std::runtime_error {
 public:
  explicit ClipBreaksOff(std::int64_t frames)
      : std::runtime_error("The clip breaks off."), frames_(frames) {}
  std::int64_t frames() const noexcept { return frames_; }

 private:
  std::int64_t frames_;
};

/// The clip's pictures, and these as host images. What has been decoded is kept within a budget of
/// memory; beyond that, reading is quick only in rising order.
class ClipSource final : public host::FrameSource {
 public:
  /// Opens the clip. `memory`: bytes of decoded pictures that may be kept. Throws media::Error.
  ClipSource(const ClipOptions& clip, int threads, std::uint64_t memory);
  ~ClipSource() override;

  const host::LayerInfo& info() const override { return layer_; }
  /// Throws ClipBreaksOff where the clip does.
  void read(std::int32_t frame, host::Image& image) override;

  media::ClipReader& reader() noexcept { return reader_; }
  const media::ClipInfo& clip() const noexcept { return reader_.info(); }

  /// Makes the layer end after this many frames. Before an instance uses it.
  void setFrameCount(std::int32_t frames) noexcept { layer_.frameCount = frames; }

  /// A frame of the clip. Throws ClipBreaksOff where the clip does, and what decoding throws. Any
  /// thread.
  media::Picture picture(std::int64_t frame);

  /// A frame of the clip if it is kept in memory. Any thread.
  std::optional<media::Picture> kept(std::int64_t frame) const { return cache_.find(frame); }

  /// Ends reading ahead, so that others may use the reader.
  void endReading();

 private:
  friend class PictureLoan;
  using Borrower = std::pair<std::thread::id, std::int64_t>;
  struct Lent {
    media::Picture picture;
    LevelArea area;
    std::optional<double> level;
  };

  media::Picture decode(std::int64_t frame);
  /// What the calling thread has lent under this frame; stays its own.
  Lent* lentFor(std::int64_t frame);

  media::ClipReader reader_;
  host::LayerInfo layer_;
  PictureCache cache_;
  std::mutex lentMutex_;
  std::map<Borrower, Lent> lent_;
  std::mutex readMutex_;
  std::unique_ptr<PictureQueue> queue_;
  std::int64_t nextInQueue_ = 0;
  std::optional<media::Picture> latest_;
  WorkerPool pool_;
};

/// The picture of a frame that the calling thread is rendering, lent to the source: while this
/// lives, reading the frame on this thread takes the picture and measures its level over `area`.
/// So several threads may render from different pictures under one frame's number.
class PictureLoan {
 public:
  PictureLoan(ClipSource& source, std::int64_t frame, const media::Picture& picture,
              const LevelArea& area);
  ~PictureLoan();
  PictureLoan(const PictureLoan&) = delete;
  PictureLoan& operator=(const PictureLoan&) = delete;

  /// The picture's level; nothing if the frame was never read.
  std::optional<double> level() const;

 private:
  ClipSource& source_;
  ClipSource::Borrower key_;
};

/// The view of a host image that media's conversions take.
media::ArgbView viewOf(host::Image& image);
media::ConstArgbView viewOf(const host::Image& image);

}  // namespace cli
