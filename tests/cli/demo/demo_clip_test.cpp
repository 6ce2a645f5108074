// tests/cli/demo/demo_clip_test.cpp — the demo's clip as decoded holds the scene times its gains.
#include "cli/demo/demo_clip.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "tests/cli/scratch_folder.h"

namespace {

namespace fs = std::filesystem;

constexpr int kFrames = 24;

std::vector<double> swingingGains() {
  std::vector<double> gains;
  for (int i = 0; i < kFrames; ++i) gains.push_back(i % 2 == 0 ? 0.8 : 1.1);
  return gains;
}

class DemoClip : public testing::Test {
 protected:
  cli::test::ScratchFolder folder_;
  cli::DemoScene scene_{192, 108, kFrames};
  cli::WorkerPool pool_{2};
  fs::path path_ = folder_.path() / "clip.mp4";
};

// Gains up to 1.1 clip nothing, so that a frame's mean is its clean mean times its gain; what the
// rounding, the codec and 4:2:0 take is far below half a level.
TEST_F(DemoClip, DecodedLevelsAreCleanLevelsTimesGain) {
  const auto gains = swingingGains();
  std::vector<std::int64_t> told;
  const auto clean = cli::writeDemoClip(path_, false, scene_, gains, pool_,
                                        [&](std::int64_t done) { told.push_back(done); });
  ASSERT_EQ(clean.size(), gains.size());
  EXPECT_EQ(told.size(), gains.size());
  EXPECT_EQ(told.back(), kFrames);

  const auto measures = cli::measureDemoClip(path_, scene_, pool_, [](std::int64_t) {});
  ASSERT_EQ(measures.levels.size(), gains.size());
  for (std::size_t i = 0; i < gains.size(); ++i) {
    EXPECT_NEAR(measures.levels[i], clean[i] * gains[i], 0.5) << i;
  }
  EXPECT_GT(measures.pictureError, 0.0);  // the codec and 8 bits take something
  EXPECT_LT(measures.pictureError, 4.0);
}

TEST_F(DemoClip, StoppingLeavesNoFile) {
  const auto stop = [](std::int64_t done) {
    if (done == 5) throw std::runtime_error("stop");
  };
  EXPECT_THROW(cli::writeDemoClip(path_, false, scene_, swingingGains(), pool_, stop),
               std::runtime_error);
  EXPECT_TRUE(fs::is_empty(folder_.path()));
}

}  // namespace
