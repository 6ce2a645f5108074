// tests/media/yuv_kernels_test.cpp — the wide kernels give bit for bit what the plain way gives.
#include "media/yuv_kernels.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "media/av_handles.h"
#include "media/frame_pixels.h"
#include "media/frame_shape.h"
#include "media/picture_rows.h"
#include "tests/media/media_fixture.h"

namespace media::test {
namespace {

const auto kRowsDone = [](int) { return true; };

class YuvKernelsTest : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    if (yuvKernels() == nullptr) GTEST_SKIP() << "this processor has no kernels";
  }

  // Random bits in every sample, also above its depth, or the extremes alone.
  FrameHandle randomFrame(int width, int height, bool extremes) {
    const Picture blank = Picture::blank(format(width, height, GetParam()));
    FrameHandle frame = referTo(*blank.frame());
    if (av_frame_make_writable(frame.get()) < 0) throw std::bad_alloc();
    for (AVBufferRef* buffer : frame->buf) {
      if (buffer == nullptr) continue;
      for (std::size_t i = 0; i < buffer->size; ++i) buffer->data[i] = byte(extremes);
    }
    return frame;
  }

  std::uint8_t byte(bool extremes) {
    const auto bits = random_();
    if (extremes) return (bits & 1U) != 0 ? 255 : 0;
    return static_cast<std::uint8_t>(bits >> 8U);
  }

  // So that whatever is written, or is not, shows.
  static void mark(const AVFrame& frame) {
    for (AVBufferRef* buffer : frame.buf) {
      if (buffer != nullptr) std::memset(buffer->data, 0xA5, buffer->size);
    }
  }

  void compare(int width, int height, bool extremes, bool upsideDown) {
    const FrameHandle frame = randomFrame(width, height, extremes);
    frame->interlaced_frame = height % 8 == 0 ? 1 : 0;
    const AVColorSpace matrices[] = {AVCOL_SPC_BT709, AVCOL_SPC_SMPTE170M, AVCOL_SPC_BT2020_NCL,
                                     AVCOL_SPC_YCGCO};
    frame->colorspace = matrices[random_() % 4];
    frame->color_range = random_() % 2 == 0 ? AVCOL_RANGE_MPEG : AVCOL_RANGE_JPEG;
    const Picture picture(shareFrame(*frame), 0);
    const Depth depth = picture.workingDepth();
    const FramePixels pixels = pixelsOf(picture);
    const PictureRows plain(pixels, depth, nullptr);
    const PictureRows wide(pixels, depth);
    SCOPED_TRACE(testing::Message() << width << "x" << height << " matrix " << frame->colorspace
                                    << " range " << frame->color_range);

    ArgbBuffer expected(width, height, depth);
    ArgbBuffer made(width, height, depth);
    const auto to = [&](const PictureRows& rows, ArgbBuffer& buffer) {
      ArgbView view = buffer.view();
      if (upsideDown) {
        view.data = view.row(height - 1);
        view.rowBytes = -view.rowBytes;
      }
      rows.toArgb(
          pixels, 0, rows.groups(), [&](int y) { return view.row(y); }, kRowsDone);
      return view;
    };
    to(plain, expected);
    to(wide, made);
    EXPECT_EQ(made.bytes, expected.bytes);

    for (std::uint8_t& component : made.bytes) component = byte(extremes);
    const ConstArgbView view = upsideDown ? ConstArgbView(made.view().row(height - 1),
                                                          -made.rowBytes, width, height, depth)
                                          : ConstArgbView(made.view());
    FramePixels plainPixels;
    FramePixels widePixels;
    const Picture plainPicture = pictureLike(picture, plainPixels);
    const Picture widePicture = pictureLike(picture, widePixels);
    const AVFrame* const plainBack = plainPicture.frame();
    const AVFrame* const wideBack = widePicture.frame();
    mark(*plainBack);
    mark(*wideBack);
    plain.fromArgb(view, 0, plain.groups(), plainPixels);
    wide.fromArgb(view, 0, wide.groups(), widePixels);
    // All of the memory, so that what lies beyond the rows counts too.
    for (std::size_t i = 0; i < AV_NUM_DATA_POINTERS && plainBack->buf[i] != nullptr; ++i) {
      ASSERT_EQ(plainBack->buf[i]->size, wideBack->buf[i]->size);
      EXPECT_EQ(
          std::memcmp(plainBack->buf[i]->data, wideBack->buf[i]->data, plainBack->buf[i]->size), 0)
          << "plane " << i;
    }
  }

  std::mt19937 random_ = seeded();
};

TEST_P(YuvKernelsTest, GiveWhatThePlainWayGives) {
  for (int width = 1; width <= 50; ++width) {
    compare(width, 1 + static_cast<int>(random_() % 9), width % 3 == 0, width % 2 == 0);
  }
  compare(640, 48, false, false);
  compare(641, 47, false, true);
}

INSTANTIATE_TEST_SUITE_P(Formats, YuvKernelsTest,
                         testing::Values("yuv420p", "yuv422p", "yuv444p", "yuv420p9le",
                                         "yuv420p10le", "yuv422p10le", "yuv444p10le", "yuv444p12le",
                                         "yuv422p16le", "yuv420p16le", "yuv440p", "yuv411p", "nv12",
                                         "p010le", "yuva420p"));

}  // namespace
}  // namespace media::test
