// media/picture_rows.h — a frame's rows to ARGB and back, group by group of those sharing chroma.
#pragma once

#include <cstddef>
#include <functional>

#include "media/argb_view.h"
#include "media/colour_transform.h"
#include "media/frame_pixels.h"
#include "media/pixel_layout.h"
#include "media/yuv_kernels.h"

namespace media {

/// A frame's rows grouped by the chroma row they share. In interlaced 4:2:0 a chroma row belongs to
/// rows of its own field.
class RowGroups {
 public:
  RowGroups(const FramePixels& frame, const PixelLayout& layout) noexcept;

  int groups() const noexcept;

  /// Calls body(y) for each luma row that has chroma row `group`; returns how many.
  template <typename Body>
  int forRows(int group, Body&& body) const {
    const int first = fields_ ? 4 * (group / 2) + group % 2 : group << shift_;
    const int step = fields_ ? 2 : 1;
    int count = 0;
    for (int y = first; count < (1 << shift_) && y < height_; y += step, ++count) body(y);
    return count;
  }

 private:
  int height_;
  int shift_;
  bool fields_;
};

/// Converts between frames like one given and ARGB of one depth. Any thread.
class PictureRows {
 public:
  /// `kernels`: to be used where they fit; null: the plain way everywhere.
  PictureRows(const FramePixels& like, Depth depth, const YuvKernels* kernels = yuvKernels());

  int groups() const noexcept { return rows_.groups(); }

  /// Converts the rows of groups first..last - 1. Each ARGB row is written where rowFor(y) says and
  /// then handed to done(y), which may stop the work by returning false.
  void toArgb(const FramePixels& frame, int first, int last,
              const std::function<void*(int y)>& rowFor,
              const std::function<bool(int y)>& done) const;

  /// The reverse. Every component of the groups' rows is written; each(y), if there is one, sees
  /// the ARGB rows that have been read.
  void fromArgb(const ConstArgbView& argb, int first, int last, const FramePixels& frame,
                const std::function<void(int y)>& each = {}) const;

 private:
  bool kernelsFit() const noexcept;
  void plainToArgb(const FramePixels& frame, int first, int last,
                   const std::function<void*(int y)>& rowFor,
                   const std::function<bool(int y)>& done) const;
  void plainFromArgb(const ConstArgbView& argb, int first, int last, const FramePixels& frame,
                     const std::function<void(int y)>& each) const;

  PixelLayout layout_;
  RowGroups rows_;
  ColourTransform transform_;
  Depth depth_;
  int width_;
  const YuvKernels* kernels_;  // null where they do not fit
  YuvMap toLevels_;
  YuvMap toCodes_;
};

}  // namespace media
