// cli/shots/curve_probe.h — what the effect makes of each level of grey at each picture of a shot.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "cli/shots/shot.h"
#include "host/effect.h"
#include "host/frame_source.h"
#include "host/image.h"
#include "host/instance.h"

namespace cli {

/// What becomes of levels 0..255, on the same scale.
using Curve = std::array<double, 256>;

/// Asks the effect, with the shot's data and settings as they are when it is made, on a layer of
/// 16 x 16 pixels.
class CurveProbe {
 public:
  /// Throws host::Error.
  CurveProbe(host::Effect& effect, Shot& shot, host::Depth depth, host::RenderPath path);
  ~CurveProbe();
  CurveProbe(const CurveProbe&) = delete;
  CurveProbe& operator=(const CurveProbe&) = delete;

  /// Holds until the next call. For a picture that the effect has a level of; it would use the
  /// curve of the one before for any other. Throws what rendering throws.
  const Curve& at(std::int32_t picture);

 private:
  host::Depth depth_;
  std::unique_ptr<host::FrameSource> layer_;
  host::Instance instance_;
  host::RenderCopy copy_;
  host::Image image_;
  Curve curve_{};
};

}  // namespace cli
