// media/clip_output.h — what stands behind a ClipWriter: a container, numbered pictures or nothing.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "media/picture.h"

namespace media {

class ClipOutput {
 public:
  virtual ~ClipOutput() = default;
  virtual void write(const Picture& picture) = 0;
  virtual void finish() = 0;
  virtual const std::vector<std::string>& notes() const noexcept = 0;
  virtual std::string encoderName() const = 0;
  virtual std::string pixelFormat() const = 0;
};

}  // namespace media
