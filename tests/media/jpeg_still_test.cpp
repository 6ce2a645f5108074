// tests/media/jpeg_still_test.cpp — stills for reports: size, shape and colours.
#include "media/jpeg_still.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "media/pixel_conversion.h"
#include "tests/media/media_fixture.h"

namespace media::test {
namespace {

// A picture of one colour, as 8-bit levels.
Picture filled(const ClipInfo& info, int red, int green, int blue) {
  ArgbBuffer argb(info.width, info.height, Depth::eight);
  const int levels[4] = {255, red, green, blue};
  for (int y = 0; y < info.height; ++y) {
    for (int x = 0; x < info.width; ++x) {
      for (int c = 0; c < 4; ++c) argb.set(x, y, c, levels[c]);
    }
  }
  return fromArgb(argb.view(), Picture::blank(info));
}

// The still as any reader of pictures sees it.
ClipReader readBack(const ScratchFolder& folder, const std::string& jpeg) {
  const std::string path = folder / "still.jpg";
  std::ofstream(path, std::ios::binary) << jpeg;
  return ClipReader(path, ReadOptions{});
}

TEST(JpegStill, KeepsColoursWhateverTheClipsMatrix) {
  for (const char* matrix : {"bt709", "smpte170m", "bt2020nc"}) {
    SCOPED_TRACE(matrix);
    ClipInfo info = format(1920, 1080, "yuv420p");
    info.colourMatrix = matrix;
    info.colourRange = "tv";
    const ScratchFolder folder;
    ClipReader reader = readBack(folder, jpegStill(filled(info, 200, 60, 40)));
    ArgbBuffer seen(reader.info().width, reader.info().height, Depth::eight);
    toArgb(*reader.next(), seen.view());
    EXPECT_NEAR(seen.at(400, 300, 1), 200, 4);
    EXPECT_NEAR(seen.at(400, 300, 2), 60, 4);
    EXPECT_NEAR(seen.at(400, 300, 3), 40, 4);
  }
}

struct Shape {
  int width, height;
  Rational pixels;
  int stillWidth, stillHeight;
};

TEST(JpegStill, FitsThePictureWithSquarePixels) {
  constexpr Shape kShapes[] = {
      {1920, 1080, {1, 1}, 320, 180}, {1080, 1920, {1, 1}, 102, 180}, {200, 100, {1, 1}, 200, 100},
      {720, 576, {16, 11}, 320, 176}, {3, 3, {1, 1}, 4, 4},
  };
  for (const Shape& shape : kShapes) {
    SCOPED_TRACE(std::to_string(shape.width) + " x " + std::to_string(shape.height));
    ClipInfo info = format(shape.width, shape.height, "rgb24");
    info.sampleAspectRatio = shape.pixels;
    const ScratchFolder folder;
    const ClipReader reader = readBack(folder, jpegStill(filled(info, 90, 90, 90), 0, 320, 180));
    EXPECT_EQ(reader.info().width, shape.stillWidth);
    EXPECT_EQ(reader.info().height, shape.stillHeight);
  }
}

TEST(JpegStill, TurnsUpright) {
  struct Turn {
    int degrees, width, height, x, y;  // and where the red corner goes
  };
  constexpr Turn kTurns[] = {
      {0, 160, 80, 8, 8}, {90, 80, 160, 72, 8}, {180, 160, 80, 152, 72}, {270, 80, 160, 8, 152}};
  ArgbBuffer argb(160, 80, Depth::eight);
  for (int y = 0; y < 80; ++y) {
    for (int x = 0; x < 160; ++x) {
      argb.set(x, y, 0, 255);
      argb.set(x, y, 1, x < 16 && y < 16 ? 250 : 0);
    }
  }
  const Picture picture = fromArgb(argb.view(), Picture::blank(format(160, 80, "rgb24")));
  for (const Turn& turn : kTurns) {
    SCOPED_TRACE(turn.degrees);
    const ScratchFolder folder;
    ClipReader reader = readBack(folder, jpegStill(picture, turn.degrees));
    ASSERT_EQ(reader.info().width, turn.width);
    ASSERT_EQ(reader.info().height, turn.height);
    ArgbBuffer seen(turn.width, turn.height, Depth::eight);
    toArgb(*reader.next(), seen.view());
    EXPECT_GT(seen.at(turn.x, turn.y, 1), 200);
    EXPECT_LT(seen.at(turn.width / 2, turn.height / 2, 1), 30);
  }
}

}  // namespace
}  // namespace media::test
