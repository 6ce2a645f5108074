// tests/cli/job/picture_queue_test.cpp — reading ahead: in order, bounded, and free to be dropped.
#include "cli/job/picture_queue.h"

#include <gtest/gtest.h>

#include "media/clip_writer.h"
#include "tests/cli/clip_name.h"
#include "tests/cli/scratch_folder.h"

namespace cli {
namespace {

constexpr int kInClip = 12;

class PictureQueueTest : public testing::Test {
 protected:
  void SetUp() override {
    media::ClipInfo info;
    info.width = info.height = 16;
    info.pixelFormat = "yuv420p";
    info.codec = "ffv1";
    media::ClipWriter writer(clip_, info);
    for (int i = 0; i < kInClip; ++i) writer.write(media::Picture::blank(info, i));
    writer.finish();
  }

  test::ScratchFolder folder_;
  std::string clip_ = folder_ / test::clip("clip");
};

TEST_F(PictureQueueTest, GivesTheFramesAskedForInOrder) {
  media::ClipReader reader(clip_);
  PictureQueue queue(reader, 3, 7, 2);
  for (int i = 3; i <= 7; ++i) {
    const auto picture = queue.pop();
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->index(), i);
  }
  EXPECT_FALSE(queue.pop());
  EXPECT_FALSE(queue.pop());
}

TEST_F(PictureQueueTest, EndsWithTheClip) {
  media::ClipReader reader(clip_);
  PictureQueue queue(reader, 10, 1000);
  EXPECT_TRUE(queue.pop());
  EXPECT_TRUE(queue.pop());
  EXPECT_FALSE(queue.pop());
}

TEST_F(PictureQueueTest, CanBeDroppedAtAnyTime) {
  media::ClipReader reader(clip_);
  for (int taken = 0; taken < kInClip; ++taken) {
    PictureQueue queue(reader, 0, kInClip - 1, 1);
    for (int i = 0; i < taken; ++i) ASSERT_TRUE(queue.pop());
  }
  EXPECT_EQ(reader.frameAt(5).index(), 5);
}

TEST_F(PictureQueueTest, PassesFailuresOn) {
  media::ClipReader reader(clip_);
  PictureQueue queue(reader, kInClip + 1, kInClip + 5);
  EXPECT_THROW(queue.pop(), media::Error);
}

}  // namespace
}  // namespace cli
