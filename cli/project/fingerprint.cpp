// cli/project/fingerprint.cpp — telling whether a project belongs to a clip.
#include "cli/project/fingerprint.h"

#include <fmt/format.h>

#include <array>
#include <vector>

#include "cli/project/crc32.h"
#include "media/pixel_conversion.h"

namespace cli {
namespace {

std::array<std::int64_t, 3> framesLookedAt(std::int64_t count) {
  return {0, count / 2, count - 1};
}

}  // namespace

ClipFingerprint fingerprintOf(ClipSource& source) {
  source.endReading();
  const media::ClipInfo& clip = source.clip();
  ClipFingerprint print;
  print.width = clip.width;
  print.height = clip.height;
  print.frames = clip.frameCount;
  std::vector<std::byte> pixels(4 * static_cast<std::size_t>(clip.width) *
                                static_cast<std::size_t>(clip.height));
  media::ArgbView view;
  view.data = pixels.data();
  view.rowBytes = 4 * static_cast<std::ptrdiff_t>(clip.width);
  view.width = clip.width;
  view.height = clip.height;
  const auto frames = framesLookedAt(clip.frameCount);
  for (std::size_t i = 0; i < frames.size(); ++i) {
    const auto kept = source.kept(frames[i]);
    media::toArgb(kept ? *kept : source.reader().frameAt(frames[i]), view);
    print.pixels[i] = crc32(pixels);
  }
  source.reader().seek(0);
  return print;
}

std::string differenceBetween(const ClipFingerprint& project, const ClipFingerprint& clip) {
  if (project.width != clip.width || project.height != clip.height) {
    return fmt::format("it is {} x {} pixels, the project's clip {} x {}", clip.width, clip.height,
                       project.width, project.height);
  }
  if (project.frames != clip.frames) {
    return fmt::format("it has {} frames, the project's clip {}", clip.frames, project.frames);
  }
  const auto frames = framesLookedAt(clip.frames);
  for (std::size_t i = 0; i < frames.size(); ++i) {
    if (project.pixels[i] != clip.pixels[i]) {
      return fmt::format("the pictures of frame {} are not the same", frames[i]);
    }
  }
  return {};
}

}  // namespace cli
