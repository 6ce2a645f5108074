// media/pixel_conversion.cpp — pictures to the host's ARGB and back, losing nothing that fits.
#include "media/pixel_conversion.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "media/error.h"
#include "media/frame_pixels.h"
#include "media/picture_rows.h"

namespace media {
namespace {

constexpr int kBandRows = 64;  // luma rows one job works on: enough to pay for its start

// Shares out the groups of a picture in bands of about kBandRows rows.
void runBands(int groups, int height, const ParallelFor& parallel,
              const std::function<void(int, int)>& work) {
  if (!parallel) {
    work(0, groups);
    return;
  }
  const int bands = std::max(1, (height + kBandRows - 1) / kBandRows);
  const auto start = [&](int band) {
    return static_cast<int>(std::int64_t{groups} * band / bands);
  };
  parallel(bands, [&](int band) { work(start(band), start(band + 1)); });
}

void requireSameSize(const Picture& picture, int width, int height) {
  if (!picture || picture.width() != width || picture.height() != height) {
    throw Error(Problem::unsupported, "A picture of " + std::to_string(picture.width()) + "x" +
                                          std::to_string(picture.height()) + " was asked for as " +
                                          std::to_string(width) + "x" + std::to_string(height) +
                                          ".");
  }
}

}  // namespace

void toArgb(const Picture& picture, const ArgbView& argb, const ParallelFor& parallel,
            const EachRow& each) {
  requireSameSize(picture, argb.width, argb.height);
  const FramePixels frame = pixelsOf(picture);
  const PictureRows rows(frame, argb.depth);
  runBands(rows.groups(), argb.height, parallel, [&](int first, int last) {
    rows.toArgb(
        frame, first, last, [&](int y) { return argb.row(y); },
        [&](int y) {
          if (each) each(y);
          return true;
        });
  });
}

Picture fromArgb(const ConstArgbView& argb, const Picture& like, const ParallelFor& parallel,
                 const EachRow& each) {
  requireSameSize(like, argb.width, argb.height);
  FramePixels frame;
  Picture made = pictureLike(like, frame);
  const PictureRows rows(frame, argb.depth);
  runBands(rows.groups(), argb.height, parallel,
           [&](int first, int last) { rows.fromArgb(argb, first, last, frame, each); });
  return made;
}

bool samePixels(const ConstArgbView& a, const ConstArgbView& b) noexcept {
  if (a.width != b.width || a.height != b.height || a.depth != b.depth) return false;
  const std::size_t bytes = static_cast<std::size_t>(a.width) * bytesPerPixel(a.depth);
  for (int y = 0; y < a.height; ++y) {
    if (std::memcmp(a.row(y), b.row(y), bytes) != 0) return false;
  }
  return true;
}

bool isUnchanged(const ConstArgbView& argb, const Picture& picture) {
  requireSameSize(picture, argb.width, argb.height);
  const FramePixels frame = pixelsOf(picture);
  const PictureRows rows(frame, argb.depth);
  const std::size_t bytes = static_cast<std::size_t>(argb.width) * bytesPerPixel(argb.depth);
  std::vector<std::byte> row(bytes);
  bool same = true;
  rows.toArgb(
      frame, 0, rows.groups(), [&](int) { return static_cast<void*>(row.data()); },
      [&](int y) { return same = std::memcmp(row.data(), argb.row(y), bytes) == 0; });
  return same;
}

}  // namespace media
