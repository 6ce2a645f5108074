// host/frame_source.h — the footage of the layer that an effect is applied to.
#pragma once

#include <cstdint>

#include "host/image.h"

namespace host {

// A layer. Frame i lasts from i x timeStep to (i + 1) x timeStep, in 1/timeScale seconds.
struct LayerInfo {
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::int32_t frameCount = 0;
  std::int32_t timeStep = 1;
  std::uint32_t timeScale = 25;
  std::int32_t pixelAspectNum = 1;
  std::uint32_t pixelAspectDen = 1;
  Depth depth = Depth::bits8;  // the project's working depth; read() is asked for it
};

// Implemented by whoever has the footage. Must outlive the instances that use it.
class FrameSource {
 public:
  virtual ~FrameSource() = default;

  virtual const LayerInfo& info() const = 0;

  // Writes frame (0..frameCount - 1) into image, which has the layer's size and the depth asked
  // for by the render or, in analysis, info().depth. Called on any thread, by several at once.
  // A failure is thrown; the host then refuses the effect's check-out and rethrows the failure
  // from the call that led to it (press, render) once the effect has returned.
  virtual void read(std::int32_t frame, Image& image) = 0;
};

}  // namespace host
