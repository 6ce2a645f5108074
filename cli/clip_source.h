// cli/clip_source.h — a clip as the layer that the effect is applied to.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>

#include "cli/frame_level.h"
#include "cli/picture_queue.h"
#include "cli/worker_pool.h"
#include "host/frame_source.h"
#include "media/clip_reader.h"

namespace cli {

/// A clip as named on the command line.
struct ClipOptions {
  std::string path;
  media::ReadOptions read;
};

/// Thrown out of an analysis that finds fewer frames than the clip announces.
class ClipBreaksOff : public std::runtime_error {
 public:
  explicit ClipBreaksOff(std::int64_t frames)
      : std::runtime_error("The clip breaks off."), frames_(frames) {}
  std::int64_t frames() const noexcept { return frames_; }

 private:
  std::int64_t frames_;
};

/// The clip's pictures as host images. Frames that are being rendered are lent to it by the render
/// pipeline; any other frame it reads itself, which is quick only in rising order.
class ClipSource final : public host::FrameSource {
 public:
  /// Opens the clip. Throws media::Error.
  ClipSource(const ClipOptions& clip, int threads);
  ~ClipSource() override;

  const host::LayerInfo& info() const override { return layer_; }
  void read(std::int32_t frame, host::Image& image) override;

  media::ClipReader& reader() noexcept { return reader_; }
  const media::ClipInfo& clip() const noexcept { return reader_.info(); }

  /// Makes the layer end after this many frames. Before an instance uses it.
  void setFrameCount(std::int32_t frames) noexcept { layer_.frameCount = frames; }

  /// Frees the reader from reading ahead, so that others may use it.
  void endReading();

  /// Lends a picture; read() of its frame then converts it, measuring its level over `area`.
  /// Any thread. takeBack() gives the level, or nothing when the frame was never read.
  void lend(std::int64_t frame, const media::Picture& picture, const LevelArea& area);
  std::optional<double> takeBack(std::int64_t frame);

 private:
  struct Lent {
    media::Picture picture;
    LevelArea area;
    std::optional<double> level;
  };

  media::Picture sequential(std::int64_t frame);

  media::ClipReader reader_;
  host::LayerInfo layer_;
  std::mutex lentMutex_;
  std::map<std::int64_t, Lent> lent_;
  std::mutex readMutex_;
  std::unique_ptr<PictureQueue> queue_;
  std::optional<media::Picture> latest_;
  WorkerPool pool_;
};

/// The view of a host image that media's conversions take.
media::ArgbView viewOf(host::Image& image);
media::ConstArgbView viewOf(const host::Image& image);

}  // namespace cli
