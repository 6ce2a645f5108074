// tests/cli/demo/demo_scene_test.cpp — the demo's scene repeats, moves, and does not flicker by
// itself.
#include "cli/demo/demo_scene.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "footage/flicker.h"

namespace {

constexpr int kWidth = 192;
constexpr int kHeight = 108;

std::vector<cli::SceneColour> drawn(const cli::DemoScene& scene, int frame) {
  std::vector<cli::SceneColour> pixels(kWidth * kHeight);
  scene.draw(frame, 0, kHeight, pixels);
  return pixels;
}

double level(const std::vector<cli::SceneColour>& pixels) {
  double sum = 0.0;
  for (const auto& c : pixels) sum += 0.3 * c[0] + 0.59 * c[1] + 0.11 * c[2];
  return sum / static_cast<double>(pixels.size());
}

TEST(DemoScene, FrameIsTheSameHoweverItIsDrawn) {
  const cli::DemoScene scene(kWidth, kHeight, 400);
  const auto whole = drawn(scene, 123);
  std::vector<cli::SceneColour> strips(kWidth * kHeight);
  for (int y = 0; y < kHeight; y += 27) {
    scene.draw(123, y, y + 27, std::span(strips).subspan(static_cast<std::size_t>(y * kWidth)));
  }
  EXPECT_EQ(strips, whole);
  EXPECT_EQ(drawn(cli::DemoScene(kWidth, kHeight, 400), 123), whole);
}

TEST(DemoScene, MovesEveryFrame) {
  const cli::DemoScene scene(kWidth, kHeight, 400);
  const auto a = drawn(scene, 50);
  const auto b = drawn(scene, 60);
  std::size_t moved = 0;
  for (std::size_t i = 0; i < a.size(); ++i) moved += std::abs(a[i][1] - b[i][1]) > 8.0F ? 1U : 0U;
  EXPECT_GT(moved, a.size() / 50);  // far beyond what grain does
}

TEST(DemoScene, IsSteadyFromFrameToFrame) {
  const cli::DemoScene scene(kWidth, kHeight, 400);
  std::vector<double> levels;
  for (int frame = 0; frame < 400; ++frame) levels.push_back(level(drawn(scene, frame)));
  EXPECT_LT(footage::frameToFrameChange(levels), 0.25);
  EXPECT_LT(footage::flickerRms(levels), 0.25);
  const auto [lowest, highest] = std::minmax_element(levels.begin(), levels.end());
  EXPECT_GT(*highest / *lowest, 1.1);  // the slow drift of daylight is there
}

TEST(DemoScene, LeavesRoomForBrighterExposure) {
  const cli::DemoScene scene(kWidth, kHeight, 400);
  for (int frame : {0, 100, 399}) {
    std::size_t bright = 0;
    const auto pixels = drawn(scene, frame);
    for (const auto& c : pixels) bright += std::max({c[0], c[1], c[2]}) * 1.2F > 255.0F ? 1U : 0U;
    EXPECT_LT(bright, pixels.size() / 50) << frame;
  }
}

}  // namespace
