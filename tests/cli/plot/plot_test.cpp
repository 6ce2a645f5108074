// tests/cli/plot/plot_test.cpp — the picture of a clip's brightness, looked at pixel by pixel.
#include "cli/plot/plot.h"

#include <cairo/cairo.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kInput = 0x9AA5B4;
constexpr std::uint32_t kDesired = 0xF09A36;
constexpr std::uint32_t kOutput = 0x1459B3;

struct Free {
  void operator()(cairo_surface_t* s) const { cairo_surface_destroy(s); }
};
using Surface = std::unique_ptr<cairo_surface_t, Free>;

std::uint32_t pixel(const Surface& s, int x, int y) {
  std::uint32_t value = 0;
  std::memcpy(
      &value,
      cairo_image_surface_get_data(s.get()) + y * cairo_image_surface_get_stride(s.get()) + x * 4,
      4);
  return value & 0xFFFFFFU;
}

/// Pixels of exactly this colour between two columns, inside the panel of levels.
int countColour(const Surface& s, std::uint32_t colour, int left, int right) {
  int count = 0;
  for (int y = 152; y < 578; ++y) {
    for (int x = left; x < right; ++x) count += pixel(s, x, y) == colour ? 1 : 0;
  }
  return count;
}

class Plot : public testing::Test {
 protected:
  void SetUp() override {
    folder_ =
        fs::temp_directory_path() /
        ("varilum4-plot-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
         "-" + ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::remove_all(folder_);
    fs::create_directories(folder_);
  }
  void TearDown() override { fs::remove_all(folder_); }

  Surface write(const cli::PlotData& data) {
    cli::writeLuminancePlot(folder_ / "plot.png", data);
    Surface surface{cairo_image_surface_create_from_png((folder_ / "plot.png").c_str())};
    EXPECT_EQ(cairo_surface_status(surface.get()), CAIRO_STATUS_SUCCESS);
    return surface;
  }
  std::size_t files() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
  }

  fs::path folder_;
};

cli::PlotData flickering(std::size_t frames) {
  cli::PlotData data;
  data.title = "Test";
  data.clipName = "clip.mp4";
  data.frameRate = 25.0;
  for (std::size_t i = 0; i < frames; ++i) {
    data.input.push_back(i % 2 == 0 ? 90.0 : 110.0);
    data.desired.push_back(100.0);
    data.output.push_back(104.0);
  }
  return data;
}

TEST_F(Plot, HasTheSizeAndAllThreeCurves) {
  const Surface s = write(flickering(200));
  EXPECT_EQ(cairo_image_surface_get_width(s.get()), 1600);
  EXPECT_EQ(cairo_image_surface_get_height(s.get()), 900);
  EXPECT_GT(countColour(s, kInput, 126, 1558), 500);
  EXPECT_GT(countColour(s, kDesired, 126, 1558), 1000);
  EXPECT_GT(countColour(s, kOutput, 126, 1558), 500);
}

TEST_F(Plot, CurveWithoutDataIsNotDrawn) {
  cli::PlotData data = flickering(200);
  data.output.clear();
  const Surface s = write(data);
  EXPECT_EQ(countColour(s, kOutput, 126, 1558), 0);
  EXPECT_GT(countColour(s, kDesired, 126, 1558), 500);
}

// Frames 80..119 of 200 lie in the middle fifth of the panel, columns 698 to 985.
TEST_F(Plot, UnanalysedFramesLeaveGap) {
  cli::PlotData data = flickering(200);
  for (std::size_t i = 80; i < 120; ++i) data.input[i] = data.desired[i] = data.output[i] = -1.0;
  const Surface s = write(data);
  for (std::uint32_t colour : {kInput, kDesired, kOutput}) {
    EXPECT_EQ(countColour(s, colour, 706, 977), 0);
    EXPECT_GT(countColour(s, colour, 126, 690), 100);
    EXPECT_GT(countColour(s, colour, 990, 1558), 100);
  }
}

TEST_F(Plot, EmptyAndOneFrameClipsAreDrawn) {
  EXPECT_NO_THROW(write({}));
  const Surface s = write(flickering(1));
  EXPECT_GT(countColour(s, kOutput, 126, 1558), 0);
}

TEST_F(Plot, ReplacesAnExistingFileAndLeavesNothingElse) {
  std::ofstream(folder_ / "plot.png") << "old";
  write(flickering(10));
  EXPECT_EQ(files(), 1U);
}

TEST_F(Plot, UnwritablePathIsASentenceForTheUser) {
  const fs::path path = folder_ / "missing" / "plot.png";
  try {
    cli::writeLuminancePlot(path, flickering(10));
    FAIL() << "no error";
  } catch (const std::runtime_error& error) {
    EXPECT_NE(std::string(error.what()).find(path.parent_path().string()), std::string::npos)
        << error.what();
    EXPECT_NE(std::string(error.what()).find("There is no folder"), std::string::npos)
        << error.what();
  }
}

// Renaming onto a folder fails after the picture was written: the half-way file must go.
TEST_F(Plot, FailedRenameLeavesNothingBehind) {
  fs::create_directories(folder_ / "plot.png" / "inside");
  EXPECT_THROW(cli::writeLuminancePlot(folder_ / "plot.png", flickering(10)), std::runtime_error);
  EXPECT_EQ(files(), 1U);
}

}  // namespace
