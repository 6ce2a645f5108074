// tests/ui/current_frame_test.cpp — frames of times inside and outside a layer.
#include "ui/current_frame.h"

#include <gtest/gtest.h>

namespace varilum {
namespace {

TEST(CurrentFrame, IsTheTimeInWholeSteps) {
  EXPECT_EQ(currentFrame(0, 10, 5), (CurrentFrame{0, 0, false, true}));
  EXPECT_EQ(currentFrame(29, 10, 5), (CurrentFrame{2, 2, false, true}));
  EXPECT_EQ(currentFrame(49, 10, 5), (CurrentFrame{4, 4, false, true}));
}

TEST(CurrentFrame, IsClampedToTheLayer) {
  EXPECT_EQ(currentFrame(50, 10, 5), (CurrentFrame{5, 4, true, true}));
  EXPECT_EQ(currentFrame(-30, 10, 5), (CurrentFrame{-3, 0, true, true}));
  EXPECT_EQ(currentFrame(-9, 10, 5), (CurrentFrame{0, 0, false, true}));
}

TEST(CurrentFrame, IsTheFirstWithoutATimeStep) {
  EXPECT_EQ(currentFrame(1000, 0, 5), (CurrentFrame{0, 0, false, true}));
  EXPECT_EQ(currentFrame(1000, -10, 5), (CurrentFrame{0, 0, false, true}));
}

TEST(CurrentFrame, DoesNotExistInALayerWithoutFrames) {
  EXPECT_EQ(currentFrame(0, 10, 0), (CurrentFrame{0, -1, true, false}));
  EXPECT_EQ(currentFrame(-30, 10, 0), (CurrentFrame{-3, 0, true, false}));
}

}  // namespace
}  // namespace varilum
