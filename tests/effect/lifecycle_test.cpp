// tests/effect/lifecycle_test.cpp — saving, opening and duplicating instances; layers that change.
#include <gtest/gtest.h>

#include <cstring>
#include <limits>

#include "tests/effect/saved_images.h"
#include "tests/effect/test_footage.h"

namespace effect_test {
namespace {

using host::Depth;
using host::Image;
using host::Instance;
using host::SavedInstance;

std::vector<std::byte> pixelsOf(const Image& image) {
  std::vector<std::byte> bytes;
  for (std::int32_t y = 0; y < image.height(); ++y) {
    bytes.insert(bytes.end(), image.row(y),
                 image.row(y) + image.width() * host::pixelBytes(image.depth()));
  }
  return bytes;
}

TEST(SaveAndOpen, KeepsTheAnalysisAndTheParameters) {
  TestFootage footage = flickeringFootage(90, 70, 40, Depth::bits8);
  Visit visit;
  SavedInstance saved;
  std::vector<std::vector<std::byte>> before;
  {
    Instance fx{visit.effect(), footage};
    fx.param("Number of smoothing frames").set(4);
    fx.param("Correction method").set(3);
    fx.param("Luminance").setTextAt(2, "99.5");
    fx.press("Analyze");
    saved = fx.save();
    for (std::int32_t i = 0; i < 40; i += 13) {
      Image out;
      fx.render(i, Depth::bits8, out);
      before.push_back(pixelsOf(out));
    }
  }
  Instance fx = Instance::open(visit.effect(), footage, saved);
  EXPECT_EQ(fx.param("Number of smoothing frames").value(), 4.0);
  EXPECT_EQ(fx.param("Luminance").text(2), "99.50 ");
  std::size_t n = 0;
  for (std::int32_t i = 0; i < 40; i += 13) {
    Image out;
    fx.render(i, Depth::bits8, out);
    EXPECT_EQ(pixelsOf(out), before[n++]) << "frame " << i;
  }
  // Saving what was opened gives the same bytes but for the handles, which mean nothing.
  auto again = fx.save().sequenceData;
  ASSERT_EQ(again.size(), saved.sequenceData.size());
  for (const std::size_t handle : {28u, 40u, 52u, 60u, 68u, 76u}) {
    put(again, handle, std::uint64_t{0});
    put(saved.sequenceData, handle, std::uint64_t{0});
  }
  // The frame in hand is not restored.
  const auto skip = [](std::size_t i) { return i >= 828 && i < 5104; };
  for (std::size_t i = 0; i < again.size(); ++i) {
    if (skip(i)) continue;
    ASSERT_EQ(again[i], saved.sequenceData[i]) << "byte " << i;
  }
}

TEST(Open, ClampsTargetsThatAreNoLevels) {
  TestFootage footage = flickeringFootage(90, 70, 6, Depth::bits8);
  Visit visit;
  SavedInstance saved;
  {
    Instance fx{visit.effect(), footage};
    fx.press("Analyze");
    saved = fx.save();
  }
  put(saved.sequenceData, 5196 + 16 * 6 + 8 * 1, 300.0);
  put(saved.sequenceData, 5196 + 16 * 6 + 8 * 2, -1.5);
  put(saved.sequenceData, 5196 + 16 * 6 + 8 * 3, std::numeric_limits<double>::quiet_NaN());
  put(saved.sequenceData, 5196 + 16 * 6 + 8 * 4, 255.0);
  put(saved.sequenceData, 5196 + 8 * 5, std::numeric_limits<double>::infinity());
  Instance fx = Instance::open(visit.effect(), footage, saved);
  const SavedData now = savedData(fx);
  EXPECT_EQ(now.level(2, 1), -1.0);
  EXPECT_EQ(now.level(2, 2), -1.0);
  EXPECT_EQ(now.level(2, 3), -1.0);
  EXPECT_EQ(now.level(2, 4), 255.0);
  EXPECT_EQ(now.level(0, 5), -1.0);
}

TEST(Open, KeepsTheSavedLengthUntilAClassicRenderSeesTheLayer) {
  TestFootage footage = flickeringFootage(90, 70, 10, Depth::bits8);
  Visit visit;
  SavedInstance saved;
  {
    Instance fx{visit.effect(), footage};
    fx.press("Analyze");
    saved = fx.save();
  }
  footage.setFrameCount(12);
  Instance fx = Instance::open(visit.effect(), footage, saved);
  EXPECT_EQ(savedData(fx).frameCount(), 10);
  const Image in = footage.frame(11, Depth::bits8);
  Image out;
  // Smart renders clamp to the last frame of the analysis that was saved.
  fx.render(11, Depth::bits8, out, host::RenderPath::smart);
  EXPECT_NE(pixelsOf(out), pixelsOf(in));
  EXPECT_EQ(savedData(fx).frameCount(), 10);
  // A classic render counts the layer's 12 frames, drops the analysis and shows the notice: a band
  // of 90 / 8 rows across the middle, everything else as it was.
  fx.render(11, Depth::bits8, out, host::RenderPath::classic);
  for (std::int32_t y = 0; y < 70; ++y) {
    const bool inBand = y >= (70 - 11) / 2 && y < (70 - 11) / 2 + 11;
    EXPECT_EQ(std::memcmp(in.row(y), out.row(y), 90 * 4) == 0, !inBand) << "row " << y;
  }
}

TEST(Open, ReadsThePreviousFormat) {
  const std::int32_t frames = 33;  // more than there are histogram slots
  TestFootage footage = flickeringFootage(90, 70, frames, Depth::bits8);
  Visit visit;
  SavedInstance saved;
  saved.sequenceData = image13(frames);
  Instance fx = Instance::open(visit.effect(), footage, saved);
  const SavedData now = savedData(fx);
  EXPECT_EQ(now.int32At(8), 14);
  ASSERT_EQ(now.frameCount(), frames);
  EXPECT_EQ(now.byteAt(97), 1);
  EXPECT_EQ(now.byteAt(613), 3);
  EXPECT_EQ(now.int32At(620), 2);
  EXPECT_EQ(now.doubleAt(624), 99.0);
  EXPECT_EQ(now.byteAt(632), 1);
  EXPECT_EQ(now.doubleAt(636), 111.0);
  EXPECT_EQ(now.doubleAt(644), 112.0);
  EXPECT_EQ(now.doubleAt(660), 1.25);
  for (std::int32_t i = 0; i < frames; ++i) {
    EXPECT_EQ(now.level(0, i), 100.0 + i);
    EXPECT_EQ(now.level(1, i), 10.0 + i);
    EXPECT_EQ(now.level(2, i), 103.0);
    EXPECT_EQ(now.level(3, i), 12.0);
    EXPECT_TRUE(now.analyzed(i));
    const std::size_t record = 5196 + 32 * std::size_t(frames) + 176 * std::size_t(i);
    EXPECT_EQ(now.int32At(record), i);
    EXPECT_EQ(now.int32At(record + 12), 5000);
    EXPECT_EQ(now.doubleAt(record + 32), 100.0 + i);
    EXPECT_EQ(now.int32At(record + 64), 1);
    EXPECT_EQ(now.int32At(record + 88), 90);
  }
}

TEST(Open, DropsThePreviousFormatOfAnotherLength) {
  TestFootage footage = flickeringFootage(90, 70, 8, Depth::bits8);
  Visit visit;
  for (const std::int32_t frames : {7, 9, 16}) {
    SavedInstance saved;
    saved.sequenceData = image13(frames);
    Instance fx = Instance::open(visit.effect(), footage, saved);
    const SavedData now = savedData(fx);
    EXPECT_EQ(now.frameCount(), 8);
    EXPECT_FALSE(now.analyzed(0));
    EXPECT_EQ(now.level(0, 0), -1.0);
  }
}

TEST(Open, DropsUnknownVersions) {
  TestFootage footage = flickeringFootage(90, 70, 8, Depth::bits8);
  Visit visit;
  SavedInstance good;
  {
    Instance fx{visit.effect(), footage};
    fx.press("Analyze");
    good = fx.save();
  }
  for (const std::int32_t version : {0, 12, 15, -1, 1000000}) {
    SavedInstance saved = good;
    put(saved.sequenceData, 8, version);
    Instance fx = Instance::open(visit.effect(), footage, saved);
    const SavedData now = savedData(fx);
    EXPECT_EQ(now.frameCount(), 8);
    EXPECT_FALSE(now.analyzed(0)) << "version " << version;
  }
}

TEST(Instances, AreIndependentAndManyMayLive) {
  TestFootage footage = flickeringFootage(60, 60, 5, Depth::bits8);
  Visit visit;
  Instance a{visit.effect(), footage};
  Instance b{visit.effect(), footage};
  a.press("Analyze");
  EXPECT_TRUE(savedData(a).analyzed(0));
  EXPECT_FALSE(savedData(b).analyzed(0));
  Instance copy = Instance::open(visit.effect(), footage, a.save());
  a.press("Clear");
  EXPECT_TRUE(savedData(copy).analyzed(0));
}

TEST(Layers, OfManyFramesFit) {
  TestFootage footage(16, 16, 100000, Depth::bits8, [](auto, auto, auto) {
    return Pixel{1.0, 0.5, 0.5, 0.5};
  });
  Visit visit;
  Instance fx{visit.effect(), footage};
  const SavedInstance saved = fx.save();
  EXPECT_EQ(saved.sequenceData.size(), 5196u + 208u * 100000u + 123000u);
  Instance again = Instance::open(visit.effect(), footage, saved);
  EXPECT_EQ(savedData(again).frameCount(), 100000);
}

}  // namespace
}  // namespace effect_test
