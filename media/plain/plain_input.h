// media/plain/plain_input.h — what stands behind a ClipReader of the plain backend.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "media/clip_reader.h"
#include "media/input_path.h"
#include "media/plain/plain_frame.h"

namespace media {

class PlainInput {
 public:
  virtual ~PlainInput() = default;

  /// Everything but ClipInfo::path.
  virtual ClipInfo info() const = 0;
  /// What was noticed while opening.
  virtual std::vector<std::string> warnings() const { return {}; }
  /// Frame 0..frameCount-1, without its times. Throws Error{damaged}.
  virtual std::shared_ptr<PlainFrame> read(std::int64_t index) = 0;
};

/// Throw Error: notVideo, unsupported, empty.
std::unique_ptr<PlainInput> openY4m(const std::string& path, const ReadOptions& options);
std::unique_ptr<PlainInput> openPnm(const InputPath& input, const ReadOptions& options);

/// Fills what follows from a frame: size, format, depth.
void describeFrame(ClipInfo& info, const PlainFormat& format, int width, int height);

}  // namespace media
