// media/pixel_conversion.cpp — pictures to the host's ARGB and back, losing nothing that fits.
#include "media/pixel_conversion.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "media/argb_rows.h"
#include "media/colour_transform.h"
#include "media/component_rows.h"
#include "media/error.h"
#include "media/frame_pixels.h"

namespace media {
namespace {

constexpr int kBandRows = 64;  // luma rows one job works on: enough to pay for its start

// A frame's rows grouped by the chroma row they share. In interlaced 4:2:0 a chroma row belongs to
// rows of its own field.
class RowGroups {
 public:
  RowGroups(const FramePixels& frame, const PixelLayout& layout)
      : height_(frame.height),
        shift_(layout.chromaHeightShift),
        fields_(frame.interlaced && shift_ == 1 && frame.height % 4 == 0) {}

  int groups() const noexcept { return ceilShift(height_, shift_); }

  /// Calls body(y) for each luma row that has chroma row `group`; returns how many.
  template <typename Body>
  int forRows(int group, Body&& body) const {
    const int first = fields_ ? 4 * (group / 2) + group % 2 : group << shift_;
    const int step = fields_ ? 2 : 1;
    int count = 0;
    for (int y = first; count < (1 << shift_) && y < height_; y += step, ++count) body(y);
    return count;
  }

  int bands() const noexcept { return std::max(1, (height_ + kBandRows - 1) / kBandRows); }
  int bandStart(int band) const noexcept {
    return static_cast<int>(std::int64_t{groups()} * band / bands());
  }

 private:
  int height_;
  int shift_;
  bool fields_;
};

struct Shape {
  explicit Shape(const FramePixels& frame) : layout(frame.layout), rows(frame, layout) {}

  bool subsampled() const noexcept { return layout.family == PixelLayout::Family::yuv; }

  PixelLayout layout;
  RowGroups rows;
};

ColourTransform transformFor(const FramePixels& frame, Depth depth) {
  return colourTransform(frame.layout, frame.range,
                         effectiveMatrix(frame.matrix, frame.width, frame.height), depth);
}

// Converts the rows of a range of groups; each ARGB row is written where `rowFor(y)` says and
// then handed to `done(y)`, which may stop the work by returning false.
template <typename RowFor, typename Done>
void groupsToArgb(const FramePixels& frame, const Shape& shape, const ColourTransform& transform,
                  Depth depth, int firstGroup, int lastGroup, RowFor&& rowFor, Done&& done) {
  const PixelLayout& layout = shape.layout;
  const int width = frame.width;
  const auto size = static_cast<std::size_t>(width);
  std::vector<float> scratch(size * 5, 0.0F);
  float* first = scratch.data();
  float* second = first + size;
  float* third = second + size;
  float* alpha = third + size;
  float* narrow = alpha + size;
  const CodeRows codes{first, second, third, layout.hasAlpha ? alpha : nullptr};
  const int chromaWidth = ceilShift(width, layout.chromaWidthShift);
  bool going = true;
  for (int group = firstGroup; group < lastGroup && going; ++group) {
    if (shape.subsampled()) {
      for (const auto& [index, row] : {std::pair{1, second}, std::pair{2, third}}) {
        const ComponentLayout& c = layout.components[static_cast<std::size_t>(index)];
        float* target = layout.chromaWidthShift == 0 ? row : narrow;
        loadRow(frame.row(c.plane, group), c, chromaWidth, target);
        if (target == narrow) replicateRow(narrow, layout.chromaWidthShift, width, row);
      }
    }
    shape.rows.forRows(group, [&](int y) {
      if (!going) return;
      loadRow(frame.row(layout.components[0].plane, y), layout.components[0], width, first);
      if (layout.family == PixelLayout::Family::rgb) {
        loadRow(frame.row(layout.components[1].plane, y), layout.components[1], width, second);
        loadRow(frame.row(layout.components[2].plane, y), layout.components[2], width, third);
      }
      if (layout.hasAlpha) {
        loadRow(frame.row(layout.components[3].plane, y), layout.components[3], width, alpha);
      }
      packArgbRow(codes, transform, depth, width, rowFor(y));
      going = done(y);
    });
  }
}

void groupsFromArgb(const ConstArgbView& argb, const Shape& shape, const ColourTransform& transform,
                    int firstGroup, int lastGroup, const FramePixels& frame) {
  const PixelLayout& layout = shape.layout;
  const int width = frame.width;
  const auto size = static_cast<std::size_t>(width);
  const bool sums = shape.subsampled() && layout.chromaHeightShift > 0;
  std::vector<float> scratch(size * 7, 0.0F);
  float* first = scratch.data();
  float* second = first + size;
  float* third = second + size;
  float* alpha = third + size;
  float* secondSum = alpha + size;
  float* thirdSum = secondSum + size;
  float* narrow = thirdSum + size;
  const MutableCodeRows codes{first, second, third, layout.hasAlpha ? alpha : nullptr};
  const int chromaWidth = ceilShift(width, layout.chromaWidthShift);
  for (int group = firstGroup; group < lastGroup; ++group) {
    if (sums) std::fill_n(secondSum, 2 * size, 0.0F);
    const int count = shape.rows.forRows(group, [&](int y) {
      unpackArgbRow(argb.row(y), transform, argb.depth, width, codes);
      storeRow(first, layout.components[0], width, frame.row(layout.components[0].plane, y));
      if (layout.family == PixelLayout::Family::rgb) {
        storeRow(second, layout.components[1], width, frame.row(layout.components[1].plane, y));
        storeRow(third, layout.components[2], width, frame.row(layout.components[2].plane, y));
      }
      if (layout.hasAlpha) {
        storeRow(alpha, layout.components[3], width, frame.row(layout.components[3].plane, y));
      }
      if (sums) {
        for (std::size_t i = 0; i < size; ++i) secondSum[i] += second[i];
        for (std::size_t i = 0; i < size; ++i) thirdSum[i] += third[i];
      }
    });
    if (!shape.subsampled()) continue;
    const float scale = sums ? 1.0F / static_cast<float>(count) : 1.0F;
    for (const auto& [index, row] :
         {std::pair{1, sums ? secondSum : second}, std::pair{2, sums ? thirdSum : third}}) {
      const ComponentLayout& c = layout.components[static_cast<std::size_t>(index)];
      averageRow(row, layout.chromaWidthShift, width, scale, narrow);
      storeRow(narrow, c, chromaWidth, frame.row(c.plane, group));
    }
  }
}

void runBands(const RowGroups& rows, const ParallelFor& parallel,
              const std::function<void(int, int)>& work) {
  if (!parallel) {
    work(0, rows.groups());
    return;
  }
  parallel(rows.bands(), [&](int band) { work(rows.bandStart(band), rows.bandStart(band + 1)); });
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

void toArgb(const Picture& picture, const ArgbView& argb, const ParallelFor& parallel) {
  requireSameSize(picture, argb.width, argb.height);
  const FramePixels frame = pixelsOf(picture);
  const Shape shape(frame);
  const ColourTransform transform = transformFor(frame, argb.depth);
  runBands(shape.rows, parallel, [&](int first, int last) {
    groupsToArgb(
        frame, shape, transform, argb.depth, first, last, [&](int y) { return argb.row(y); },
        [](int) { return true; });
  });
}

Picture fromArgb(const ConstArgbView& argb, const Picture& like, const ParallelFor& parallel) {
  requireSameSize(like, argb.width, argb.height);
  FramePixels frame;
  Picture made = pictureLike(like, frame);
  const Shape shape(frame);
  const ColourTransform transform = transformFor(frame, argb.depth);
  runBands(shape.rows, parallel, [&](int first, int last) {
    groupsFromArgb(argb, shape, transform, first, last, frame);
  });
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
  const Shape shape(frame);
  const ColourTransform transform = transformFor(frame, argb.depth);
  const std::size_t bytes = static_cast<std::size_t>(argb.width) * bytesPerPixel(argb.depth);
  std::vector<std::byte> row(bytes);
  bool same = true;
  groupsToArgb(
      frame, shape, transform, argb.depth, 0, shape.rows.groups(),
      [&](int) { return static_cast<void*>(row.data()); },
      [&](int y) { return same = std::memcmp(row.data(), argb.row(y), bytes) == 0; });
  return same;
}

}  // namespace media
