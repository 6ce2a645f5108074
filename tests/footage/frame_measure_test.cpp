// tests/footage/frame_measure_test.cpp — measures of pictures whose measures are known.
#include "footage/frame_measure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

namespace footage {
namespace {

struct Picture {
  Picture(int w, int h, int padding = 0)
      : width(w),
        height(h),
        rowBytes(4 * w + padding),
        bytes(static_cast<std::size_t>(rowBytes) * static_cast<std::size_t>(h), 0) {}

  std::uint8_t* at(int x, int y) {
    return bytes.data() + static_cast<std::ptrdiff_t>(y) * rowBytes + 4 * x;
  }
  void fill(int left, int top, int right, int bottom, std::uint8_t r, std::uint8_t g,
            std::uint8_t b) {
    for (int y = top; y < bottom; ++y) {
      for (int x = left; x < right; ++x) {
        at(x, y)[1] = r;
        at(x, y)[2] = g;
        at(x, y)[3] = b;
      }
    }
  }
  FrameMeasure measure() const { return measureFrame({bytes.data(), rowBytes, width, height}); }

  int width;
  int height;
  int rowBytes;
  std::vector<std::uint8_t> bytes;
};

TEST(FrameMeasure, OfAnEvenPictureIsItsColour) {
  for (const auto& [width, height] : {std::pair{1920, 1080}, {96, 54}, {1, 1}, {7, 300}}) {
    Picture picture(width, height, 12);
    picture.fill(0, 0, width, height, 200, 100, 50);  // luminance 60 + 59 + 5.5
    const FrameMeasure measure = picture.measure();
    EXPECT_NEAR(measure.meanLuminance, 124.5, 1e-9);
    for (std::uint16_t cell : measure.thumbnail) EXPECT_EQ(cell, 31872);
    for (const auto& tile : measure.mosaic)
      EXPECT_EQ(tile, (std::array<std::uint8_t, 3>{200, 100, 50}));
    EXPECT_EQ(measure.histogram[124], measure.sampled);
    EXPECT_EQ(measure.width, width);
    EXPECT_EQ(measure.height, height);
  }
}

TEST(FrameMeasure, HistogramCountsAtMost65535Pixels) {
  for (const auto& [width, height] : {std::pair{300, 200}, {1920, 1080}, {65536, 2}, {3, 50000}}) {
    Picture picture(width, height);
    const FrameMeasure measure = picture.measure();
    EXPECT_LE(measure.sampled, 65535U);
    EXPECT_GE(measure.sampled, std::min(10000, width * height / 4));
    EXPECT_EQ(std::accumulate(measure.histogram.begin(), measure.histogram.end(), 0U),
              measure.sampled);
  }
}

TEST(FrameMeasure, ThumbnailKeepsWhatIsWhere) {
  Picture picture(480, 270);
  picture.fill(0, 0, 240, 270, 255, 255, 255);
  const FrameMeasure measure = picture.measure();
  EXPECT_EQ(measure.thumbnail[0], 65280);
  EXPECT_EQ(measure.thumbnail[23], 65280);
  EXPECT_EQ(measure.thumbnail[24], 0);
  EXPECT_EQ(measure.mosaic[7][0], 255);
  EXPECT_EQ(measure.mosaic[8][0], 0);
  EXPECT_NEAR(measure.meanLuminance, 127.5, 1e-9);
}

TEST(FrameMeasure, HashTellsEveryByteButPadding) {
  std::mt19937 random(3);
  Picture picture(37, 21, 20);
  for (std::uint8_t& byte : picture.bytes) byte = static_cast<std::uint8_t>(random());
  const std::uint64_t hash = picture.measure().hash;
  for (int y = 0; y < picture.height; ++y) {
    for (int at = 0; at < 4 * picture.width; ++at) {
      picture.at(0, y)[at] ^= 1;
      ASSERT_NE(picture.measure().hash, hash) << y << ' ' << at;
      picture.at(0, y)[at] ^= 1;
    }
    picture.at(0, y)[4 * picture.width] ^= 1;
  }
  EXPECT_EQ(picture.measure().hash, hash);
}

TEST(FrameMeasure, UpsideDownRowsAreReadFromTheTop) {
  Picture picture(480, 270);
  picture.fill(0, 135, 480, 270, 90, 90, 90);
  const FrameMeasure measure =
      measureFrame({picture.at(0, 269), -picture.rowBytes, picture.width, picture.height});
  EXPECT_EQ(measure.thumbnail.front(), 90 * 256);
  EXPECT_EQ(measure.thumbnail.back(), 0);
  EXPECT_EQ(measure.bottom.extent, 270);
}

TEST(FrameMeasure, WithoutPixelsIsFresh) {
  EXPECT_EQ(measureFrame({}).sampled, 0U);
  EXPECT_EQ(measureFrame({}).width, 0);
}

TEST(FrameMeasure, BarsEndWhereThePictureBegins) {
  for (int top : {0, 1, 2, 17, 138, 139, 140, 141}) {
    Picture picture(1920, 1080);
    picture.fill(0, 0, 1920, 1080, 12, 12, 12);
    picture.fill(0, top, 1920, 1080 - 2 * top, 120, 100, 80);
    const FrameMeasure measure = picture.measure();
    EXPECT_EQ(measure.top.extent, top);
    EXPECT_EQ(measure.bottom.extent, 2 * top);
    EXPECT_EQ(measure.left.extent, 0);
    if (top > 0) {
      EXPECT_EQ(measure.top.edge, 100);
    }
  }
}

TEST(FrameMeasure, BarsMayBeNoisy) {
  std::mt19937 random(7);
  std::normal_distribution<double> noise(20, 2.5);
  Picture picture(960, 540);
  for (int y = 0; y < 540; ++y) {
    for (int x = 0; x < 960; ++x) {
      const auto level = static_cast<std::uint8_t>(std::max(0.0, noise(random)));
      picture.fill(x, y, x + 1, y + 1, level, level, level);
    }
  }
  picture.fill(120, 0, 840, 540, 130, 130, 130);
  const FrameMeasure measure = picture.measure();
  EXPECT_EQ(measure.left.extent, 120);
  EXPECT_EQ(measure.right.extent, 120);
  EXPECT_EQ(measure.top.extent, 0);
  EXPECT_GT(measure.left.edge, 95);
}

TEST(FrameMeasure, ADarkFrameHasNoEdge) {
  Picture picture(320, 180);
  EXPECT_EQ(picture.measure().top.extent, 180);
  EXPECT_EQ(picture.measure().left.extent, 320);
  EXPECT_EQ(picture.measure().top.edge, 0);
}

}  // namespace
}  // namespace footage
