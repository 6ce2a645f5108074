// tests/media/stored_level_test.cpp — levels as files keep them, of pictures worked out by hand.
#include "media/stored_level.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "media/pixel_conversion.h"

namespace media {
namespace {

ClipInfo clipOf(const std::string& format) {
  ClipInfo info;
  info.width = 6;
  info.height = 4;
  info.pixelFormat = format;
  return info;
}

TEST(StoredLevel, BlackIsWhatTheFormatMakesOfIt) {
  EXPECT_DOUBLE_EQ(storedLevel(Picture::blank(clipOf("yuv420p"))), 16.0);
  EXPECT_DOUBLE_EQ(storedLevel(Picture::blank(clipOf("gbrp"))), 0.0);
  EXPECT_DOUBLE_EQ(storedLevel(Picture::blank(clipOf("yuv422p10le"))), 64.0 * 255.0 / 1023.0);
}

TEST(StoredLevel, IsTheMeanOverAllSamples) {
  // Opaque grey, the left half at 50 and the right half at 200: luma 16 + level * 219 / 255.
  std::vector<std::uint8_t> bytes;
  for (int i = 0; i < 6 * 4; ++i) {
    const std::uint8_t level = i % 6 < 3 ? 50 : 200;
    for (const std::uint8_t byte : {std::uint8_t{255}, level, level, level}) bytes.push_back(byte);
  }
  ConstArgbView view;
  view.data = bytes.data();
  view.rowBytes = 6 * 4;
  view.width = 6;
  view.height = 4;
  view.depth = Depth::eight;
  // Whole numbers in the file: 59 and 188.
  EXPECT_DOUBLE_EQ(storedLevel(fromArgb(view, Picture::blank(clipOf("yuv420p")))),
                   (59.0 + 188.0) / 2.0);
}

}  // namespace
}  // namespace media
