// cli/shots/shot_layer.h — a shot of the clip as the layer that an instance of the effect is
// applied to.
#pragma once

#include <cstdint>
#include <functional>
#include <utility>

#include "cli/job/clip_source.h"
#include "cli/shots/shot_frames.h"
#include "host/frame_source.h"

namespace cli {

/// Its frame i is picture i of the shot: no frame of another shot and no picture twice, so that no
/// smoothing reaches over a cut or counts a held picture more than once.
class ShotLayer final : public host::FrameSource {
 public:
  /// Told of each picture once, in order, while it is at hand. On the reading thread.
  using Observer = std::function<void(std::int32_t picture, const host::Image& image)>;

  /// `clip` outlives the layer.
  ShotLayer(ClipSource& clip, ShotFrames frames);

  const host::LayerInfo& info() const override { return info_; }
  void read(std::int32_t picture, host::Image& image) override;

  const ShotFrames& frames() const noexcept { return frames_; }

  /// From now on somebody looks at what is read. Pictures that are passed over are read for the
  /// observer alone. Not while anything reads.
  void observe(Observer observer);
  /// Reads what is left for the observer, and lets go of it.
  void endObserving();

 private:
  void showUpTo(std::int32_t end);

  ClipSource& clip_;
  ShotFrames frames_;
  host::LayerInfo info_;
  Observer observer_;
  std::int32_t next_ = 0;  // picture that the observer is waiting for
};

}  // namespace cli
