// tests/plugin/restore_test.cpp — instances from saved images, whole and damaged.
#include "stats/restore.h"

#include "stats/invalidation.h"
#include "tests/plugin/instance_fixture.h"

namespace varilum {
namespace {

class Restore : public InstanceFixture {};

TEST_F(Restore, ImitatedLiveDataIsNotFollowed) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  void** victim = handle();
  // The very bytes of a live header, as a forged project may hold them: handles and all.
  const std::vector<std::byte> forged = table_.bytes(victim);
  open(forged);
  EXPECT_EQ(table_.live(), 2 * kHandlesOfInstance) << "fresh instance beside the victim";
  setdown();
  out_.sequence_data = table_.createFrom(forged);
  setdown();
  out_.sequence_data = table_.createFrom(forged);
  EXPECT_EQ(flattenSequence(in_, out_, true), 0);
  setdown();
  out_.sequence_data = victim;
  EXPECT_EQ(levels(Levels::inputLuminance), std::vector<double>(10, -1.0));
  setdown();
  EXPECT_EQ(table_.live(), 0u);
}

TEST_F(Restore, TruncatedImagesGiveAFreshInstance) {
  setFrames(2);
  ASSERT_EQ(setupSequence(in_, out_), 0);
  SequenceState state = header();
  state.analysisComplete = 1;
  setHeader(state);
  void** first = handle();
  const std::vector<std::byte> image = flatImage();
  out_.sequence_data = first;
  setdown();
  for (std::size_t size = 0; size < image.size();
       size += size < 300 || size + 500 > image.size() ? std::size_t{1} : std::size_t{97}) {
    SCOPED_TRACE(size);
    open({image.begin(), image.begin() + static_cast<std::ptrdiff_t>(size)});
    expectFresh(2);
    setdown();
  }
  EXPECT_EQ(table_.live(), 0u);
}

TEST_F(Restore, InconsistentImagesGiveAFreshInstance) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  void** first = handle();
  const std::vector<std::byte> image = flatImage();
  out_.sequence_data = first;
  setdown();
  struct Damage {
    std::size_t offset;
    std::int32_t value;
  };
  for (const Damage& damage :
       {Damage{8, 15}, Damage{8, 12}, Damage{8, 0}, Damage{12, -1}, Damage{12, 24403224},
        Damage{12, 11}, Damage{16, -1}, Damage{16, 31}, Damage{20, -1}, Damage{20, 103},
        Damage{20, 5197}, Damage{24, 1759}, Damage{36, 123001}, Damage{48, 88}, Damage{48, -8}}) {
    SCOPED_TRACE(damage.offset);
    std::vector<std::byte> damaged = image;
    put(damaged, damage.offset, damage.value);
    open(damaged);
    expectFresh(10);
    setdown();
  }
}

TEST_F(Restore, TheSavedFrameCountWins) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  setLevel(Levels::inputLuminance, 9, 50.0);
  void** first = handle();
  const std::vector<std::byte> image = flatImage();
  out_.sequence_data = first;
  setdown();
  setFrames(12);
  open(image);
  EXPECT_EQ(header().frameCount, 10);
  EXPECT_EQ(levels(Levels::inputLuminance)[9], 50.0);
  // The first render then finds the layer longer.
  SequenceState state = header();
  EXPECT_EQ(resyncFrameCount(in_, state), 0);
  setHeader(state);
  expectFresh(12);
}

TEST_F(Restore, ImagesWithoutRecordsLeaveThemFresh) {
  in_.in_flags = 1;
  ASSERT_EQ(setupSequence(in_, out_), 0);
  setLevel(Levels::inputLuminance, 1, 60.0);
  void** first = handle();
  const std::vector<std::byte> image = flatImage();
  out_.sequence_data = first;
  setdown();
  in_.in_flags = 0;
  open(image);
  EXPECT_EQ(levels(Levels::inputLuminance)[1], 60.0);
  EXPECT_EQ(header().frameStatsBytes, 1760u);
  EXPECT_EQ(header().histogramCacheBytes, 123000u);
  FrameHistogram histogram;
  EXPECT_EQ(fetchStats(1, histogram).frame, -1);
}

TEST_F(Restore, RenderingCopiesDropTheRecordsOfAnImage) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  storeFrame(3);
  setLevel(Levels::inputLuminance, 3, 60.0);
  void** first = handle();
  const std::vector<std::byte> image = flatImage();
  out_.sequence_data = first;
  setdown();
  in_.in_flags = 1;
  open(image);
  EXPECT_EQ(+header().frameStats, 0u);
  EXPECT_EQ(header().frameStatsBytes, 0u);
  EXPECT_EQ(+header().histogramCache, 0u);
  EXPECT_EQ(header().histogramCacheBytes, 0u);
  EXPECT_EQ(levels(Levels::inputLuminance)[3], 60.0);
  EXPECT_EQ(table_.live(), 5u);
}

TEST_F(Restore, CachesOfAnotherSizeBelongToTheFirstFrames) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  storeFrame(0);
  storeFrame(5);
  void** first = handle();
  std::vector<std::byte> image = flatImage();
  out_.sequence_data = first;
  setdown();
  // Keep two slots only.
  put(image, 16, std::int32_t{2});
  put(image, 36, std::uint32_t{2 * 4100});
  image.resize(5196 + 320 + 1760 + 2 * 4100);
  open(image);
  FrameHistogram histogram;
  EXPECT_EQ(fetchStats(0, histogram).pixelCount, 100);
  EXPECT_EQ(histogram.luminance[7], 1000u);
  EXPECT_EQ(fetchStats(5, histogram).pixelCount, 105);
  EXPECT_EQ(histogram.luminance[7], 0u) << "its slot was not kept";
  EXPECT_EQ(header().slotCount, 30);
}

TEST_F(Restore, ShortHeadersAreFilledUp) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  setLevel(Levels::inputLuminance, 0, 33.0);
  void** first = handle();
  std::vector<std::byte> image = flatImage();
  out_.sequence_data = first;
  setdown();
  // Cut the header after 700 bytes: what follows moves up.
  image.erase(image.begin() + 700, image.begin() + 5196);
  put(image, 20, std::uint32_t{700});
  open(image);
  EXPECT_EQ(levels(Levels::inputLuminance)[0], 33.0);
  EXPECT_EQ(header().currentStats.frame, -1);
}

std::vector<std::byte> image13(std::size_t frames) {
  std::vector<std::byte> image(1068 + frames * (32 + 4396));
  put(image, 8, std::int32_t{13});
  put(image, 21, std::uint8_t{1});
  put(image, 41, std::uint8_t{1});
  put(image, 48, 0.0);
  for (std::size_t i = 0; i < frames; ++i) {
    put(image, 1068 + 8 * i, 40.0 + static_cast<double>(i));
    const std::size_t entry = 1068 + 32 * frames + 4396 * i;
    put(image, entry + 4 * 9, static_cast<std::uint32_t>(500 + i));
    put(image, entry + 1024, static_cast<std::int32_t>(900 + i));
    put(image, entry + 4136, std::uint8_t{1});
  }
  return image;
}

TEST_F(Restore, ReadsThePreviousVersion) {
  open(image13(10));
  EXPECT_EQ(table_.live(), kHandlesOfInstance);
  EXPECT_EQ(header().formatVersion, 14);
  EXPECT_EQ(header().analysisComplete, 1);
  EXPECT_EQ(header().flattened, 0);
  EXPECT_EQ(+header().clippingPercent, 99.0);
  EXPECT_EQ(levels(Levels::inputLuminance)[9], 49.0);
  FrameHistogram histogram;
  EXPECT_EQ(fetchStats(9, histogram).pixelCount, 909);
  EXPECT_EQ(histogram.luminance[9], 509u);
}

TEST_F(Restore, ThePreviousVersionMustFitTheLayer) {
  open(image13(9));
  expectFresh(10);
  setdown();
  open(image13(11));
  expectFresh(10);
}

}  // namespace
}  // namespace varilum
