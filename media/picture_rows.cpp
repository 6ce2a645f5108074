// media/picture_rows.cpp — a frame's rows to ARGB and back, group by group of those sharing chroma.
#include "media/picture_rows.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>
#include <vector>

#include "media/argb_rows.h"
#include "media/component_rows.h"

namespace media {
namespace {

ColourTransform transformFor(const FramePixels& frame, Depth depth) {
  return colourTransform(frame.layout, frame.range,
                         effectiveMatrix(frame.matrix, frame.width, frame.height), depth);
}

YuvMap yuvMap(const AffineMap& map) noexcept {
  YuvMap result;
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) result.matrix[i][j] = map.matrix[i][j];
    result.offset[i] = map.offset[i];
  }
  return result;
}

// One plane a component, lowest bits first, no bits of others.
bool isPlanar(const PixelLayout& layout, int bytes) noexcept {
  const auto& components = layout.components;
  return std::all_of(components.begin(), components.begin() + 3, [bytes](const auto& c) {
    return c.bytes == bytes && c.step == bytes && c.offset == 0 && c.shift == 0 && !c.swapped &&
           !c.shared;
  });
}

}  // namespace

RowGroups::RowGroups(const FramePixels& frame, const PixelLayout& layout) noexcept
    : height_(frame.height),
      shift_(layout.chromaHeightShift),
      fields_(frame.interlaced && shift_ == 1 && frame.height % 4 == 0) {}

int RowGroups::groups() const noexcept {
  return ceilShift(height_, shift_);
}

PictureRows::PictureRows(const FramePixels& like, Depth depth, const YuvKernels* kernels)
    : layout_(like.layout),
      rows_(like, layout_),
      transform_(transformFor(like, depth)),
      depth_(depth),
      width_(like.width),
      kernels_(kernels),
      toLevels_(yuvMap(transform_.toLevels)),
      toCodes_(yuvMap(transform_.toCodes)) {
  if (!kernelsFit()) kernels_ = nullptr;
}

bool PictureRows::kernelsFit() const noexcept {
  const bool shape = layout_.family == PixelLayout::Family::yuv && !layout_.hasAlpha &&
                     layout_.chromaWidthShift <= 1 &&
                     layout_.chromaHeightShift <= layout_.chromaWidthShift;
  const bool narrow = depth_ == Depth::eight && layout_.depth == 8 && isPlanar(layout_, 1);
  const bool wide = depth_ == Depth::sixteen && layout_.depth > 8 && isPlanar(layout_, 2);
  const auto& m = toLevels_.matrix;
  const bool plainMatrix =
      m[0][0] == m[1][0] && m[0][0] == m[2][0] && m[0][1] == 0.0F && m[2][2] == 0.0F;
  return shape && (narrow || wide) && plainMatrix;
}

void PictureRows::toArgb(const FramePixels& frame, int first, int last,
                         const std::function<void*(int y)>& rowFor,
                         const std::function<bool(int y)>& done) const {
  if (kernels_ == nullptr) {
    plainToArgb(frame, first, last, rowFor, done);
    return;
  }
  const auto& components = layout_.components;
  const auto kernel = kernels_->toArgb[depth_ == Depth::eight ? 0 : 1][layout_.chromaWidthShift];
  const auto maximum = static_cast<std::int32_t>(components[0].maximum());
  bool going = true;
  for (int group = first; group < last && going; ++group) {
    rows_.forRows(group, [&](int y) {
      if (!going) return;
      const YuvRow row{frame.row(components[0].plane, y), frame.row(components[1].plane, group),
                       frame.row(components[2].plane, group), maximum};
      kernel(row, toLevels_, width_, rowFor(y));
      going = done(y);
    });
  }
}

void PictureRows::fromArgb(const ConstArgbView& argb, int first, int last, const FramePixels& frame,
                           const std::function<void(int y)>& each) const {
  if (kernels_ == nullptr) {
    plainFromArgb(argb, first, last, frame, each);
    return;
  }
  const auto& components = layout_.components;
  const int wide = depth_ == Depth::eight ? 0 : 1;
  const auto maximum = static_cast<std::int32_t>(components[0].maximum());
  for (int group = first; group < last; ++group) {
    int lumaRows[2] = {};
    int count = 0;
    rows_.forRows(group, [&](int y) { lumaRows[count++] = y; });
    const auto kernel = count == 2 ? kernels_->fromTwoRows[wide]
                                   : kernels_->fromArgb[wide][layout_.chromaWidthShift];
    const MutableYuvRow row{
        frame.row(components[0].plane, lumaRows[0]), frame.row(components[0].plane, lumaRows[1]),
        frame.row(components[1].plane, group), frame.row(components[2].plane, group), maximum};
    kernel(argb.row(lumaRows[0]), argb.row(lumaRows[1]), toCodes_, width_, row);
    for (int i = 0; each && i < count; ++i) each(lumaRows[i]);
  }
}

void PictureRows::plainToArgb(const FramePixels& frame, int firstGroup, int lastGroup,
                              const std::function<void*(int y)>& rowFor,
                              const std::function<bool(int y)>& done) const {
  const bool subsampled = layout_.family == PixelLayout::Family::yuv;
  const auto size = static_cast<std::size_t>(width_);
  std::vector<float> scratch(size * 5, 0.0F);
  float* first = scratch.data();
  float* second = first + size;
  float* third = second + size;
  float* alpha = third + size;
  float* narrow = alpha + size;
  const CodeRows codes{first, second, third, layout_.hasAlpha ? alpha : nullptr};
  const int chromaWidth = ceilShift(width_, layout_.chromaWidthShift);
  bool going = true;
  for (int group = firstGroup; group < lastGroup && going; ++group) {
    if (subsampled) {
      for (const auto& [index, row] : {std::pair{1, second}, std::pair{2, third}}) {
        const ComponentLayout& c = layout_.components[static_cast<std::size_t>(index)];
        float* target = layout_.chromaWidthShift == 0 ? row : narrow;
        loadRow(frame.row(c.plane, group), c, chromaWidth, target);
        if (target == narrow) replicateRow(narrow, layout_.chromaWidthShift, width_, row);
      }
    }
    rows_.forRows(group, [&](int y) {
      if (!going) return;
      loadRow(frame.row(layout_.components[0].plane, y), layout_.components[0], width_, first);
      if (layout_.family == PixelLayout::Family::rgb) {
        loadRow(frame.row(layout_.components[1].plane, y), layout_.components[1], width_, second);
        loadRow(frame.row(layout_.components[2].plane, y), layout_.components[2], width_, third);
      }
      if (layout_.hasAlpha) {
        loadRow(frame.row(layout_.components[3].plane, y), layout_.components[3], width_, alpha);
      }
      packArgbRow(codes, transform_, depth_, width_, rowFor(y));
      going = done(y);
    });
  }
}

void PictureRows::plainFromArgb(const ConstArgbView& argb, int firstGroup, int lastGroup,
                                const FramePixels& frame,
                                const std::function<void(int y)>& each) const {
  const bool subsampled = layout_.family == PixelLayout::Family::yuv;
  const auto size = static_cast<std::size_t>(width_);
  const bool sums = subsampled && layout_.chromaHeightShift > 0;
  std::vector<float> scratch(size * 7, 0.0F);
  float* first = scratch.data();
  float* second = first + size;
  float* third = second + size;
  float* alpha = third + size;
  float* secondSum = alpha + size;
  float* thirdSum = secondSum + size;
  float* narrow = thirdSum + size;
  const MutableCodeRows codes{first, second, third, layout_.hasAlpha ? alpha : nullptr};
  const int chromaWidth = ceilShift(width_, layout_.chromaWidthShift);
  for (int group = firstGroup; group < lastGroup; ++group) {
    if (sums) std::fill_n(secondSum, 2 * size, 0.0F);
    const int count = rows_.forRows(group, [&](int y) {
      unpackArgbRow(argb.row(y), transform_, depth_, width_, codes);
      if (each) each(y);
      storeRow(first, layout_.components[0], width_, frame.row(layout_.components[0].plane, y));
      if (layout_.family == PixelLayout::Family::rgb) {
        storeRow(second, layout_.components[1], width_, frame.row(layout_.components[1].plane, y));
        storeRow(third, layout_.components[2], width_, frame.row(layout_.components[2].plane, y));
      }
      if (layout_.hasAlpha) {
        storeRow(alpha, layout_.components[3], width_, frame.row(layout_.components[3].plane, y));
      }
      if (sums) {
        for (std::size_t i = 0; i < size; ++i) secondSum[i] += second[i];
        for (std::size_t i = 0; i < size; ++i) thirdSum[i] += third[i];
      }
    });
    if (!subsampled) continue;
    const float scale = sums ? 1.0F / static_cast<float>(count) : 1.0F;
    for (const auto& [index, row] :
         {std::pair{1, sums ? secondSum : second}, std::pair{2, sums ? thirdSum : third}}) {
      const ComponentLayout& c = layout_.components[static_cast<std::size_t>(index)];
      averageRow(row, layout_.chromaWidthShift, width_, scale, narrow);
      storeRow(narrow, c, chromaWidth, frame.row(c.plane, group));
    }
  }
}

}  // namespace media
