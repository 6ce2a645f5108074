// tests/media/colour_transform_test.cpp — luma weights by the name of a clip's matrix.
#include "media/colour_transform.h"

#include <gtest/gtest.h>

namespace media {
namespace {

TEST(ColourTransform, LumaWeighsAsTheClipsMatrixSays) {
  const LumaWeights film = lumaWeights("bt2020nc", 640, 360);
  EXPECT_DOUBLE_EQ(film.red, 0.2627);
  EXPECT_DOUBLE_EQ(film.green, 0.6780);
  EXPECT_DOUBLE_EQ(film.blue, 0.0593);
  EXPECT_DOUBLE_EQ(lumaWeights("smpte170m", 1920, 1080).green, 0.587);
}

TEST(ColourTransform, LumaOfAClipThatSaysNothingIsThatOfItsSize) {
  for (const char* name : {"unknown", "", "gbr"}) {
    EXPECT_DOUBLE_EQ(lumaWeights(name, 1920, 1080).red, 0.2126) << name;
    EXPECT_DOUBLE_EQ(lumaWeights(name, 720, 576).red, 0.299) << name;
  }
}

}  // namespace
}  // namespace media
