// tests/plugin/lifecycle_test.cpp — instances made, saved, restored and destroyed.
#include "stats/lifecycle.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <vector>

#include "hostapi/commands.h"
#include "stats/invalidation.h"
#include "stats/live_registry.h"
#include "stats/sequence_arrays.h"
#include "tests/plugin/handle_table.h"

namespace varilum {
namespace {

constexpr std::size_t kHandlesOfInstance = 7;  // header, records, cache, four arrays
// Positions among an instance's arrays.
enum class Levels { inputLuminance = 2, inputSpread, desiredLuminance, desiredSpread };

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

class Lifecycle : public ::testing::Test {
 protected:
  Lifecycle() {
    in_.utils = table_.utils();
    in_.time_step = 100;
    in_.time_scale = 2500;
    setFrames(10);
  }
  ~Lifecycle() override {
    releaseRegistry(in_);
    EXPECT_EQ(table_.violations(), 0);
  }

  void setFrames(std::int32_t frames) { in_.total_time = frames * 100; }
  void** handle() const { return out_.sequence_data; }

  // The header, by value: it is packed, and may move.
  SequenceState header() {
    SequenceState state;
    std::memcpy(&state, table_.bytes(handle()).data(), sizeof state);
    return state;
  }
  void setHeader(const SequenceState& state) {
    std::memcpy(table_.bytes(handle()).data(), &state, sizeof state);
  }

  std::vector<std::byte>& levelBytes(Levels which) {
    return table_.bytes(arrayHandles(header())[static_cast<std::size_t>(which)]);
  }
  std::vector<double> levels(Levels which) {
    const auto& bytes = levelBytes(which);
    std::vector<double> result(bytes.size() / sizeof(double));
    std::memcpy(result.data(), bytes.data(), bytes.size());
    return result;
  }
  void setLevel(Levels which, std::size_t frame, double level) {
    std::memcpy(levelBytes(which).data() + frame * 8, &level, 8);
  }

  void storeFrame(std::int32_t frame) {
    const SequenceState state = header();
    FrameStats stats;
    FrameHistogram histogram;
    resetFrameStats(stats);
    resetFrameHistogram(histogram);
    stats.frame = frame;
    stats.analyzed = 1;
    stats.pixelCount = 100 + frame;
    histogram.luminance[7] = static_cast<std::uint32_t>(1000 + frame);
    storeFrameStats(in_, state, frame, stats, histogram);
  }
  FrameStats fetchStats(std::int32_t frame, FrameHistogram& histogram) {
    const SequenceState state = header();
    FrameStats stats;
    fetchFrameStats(in_, state, frame, stats, histogram);
    return stats;
  }

  std::vector<std::byte> flatImage() {
    EXPECT_EQ(flattenSequence(in_, out_, false), 0);
    const std::vector<std::byte> image = table_.bytes(out_.sequence_data);
    table_.dispose(out_.sequence_data);
    return image;
  }

  void open(const std::vector<std::byte>& image, std::int32_t expected = 0) {
    out_.sequence_data = table_.createFrom(image);
    EXPECT_EQ(resetupSequence(in_, out_), expected);
  }

  void expectFresh(std::int32_t frames) {
    ASSERT_NE(handle(), nullptr);
    EXPECT_EQ(header().frameCount, frames);
    EXPECT_EQ(header().analysisComplete, 0);
    EXPECT_EQ(header().flattened, 0);
    EXPECT_EQ(header().recomputeDesired, 1);
    EXPECT_EQ(levels(Levels::inputLuminance),
              std::vector<double>(static_cast<std::size_t>(frames), -1.0));
    EXPECT_EQ(table_.live(), kHandlesOfInstance);
  }

  void setdown() {
    EXPECT_EQ(setdownSequence(in_, out_), 0);
    EXPECT_EQ(handle(), nullptr);
  }

  HandleTable table_;
  PF_InData in_{};
  PF_OutData out_{};
};

template <class Value>
void put(std::vector<std::byte>& bytes, std::size_t offset, Value value) {
  std::memcpy(bytes.data() + offset, &value, sizeof value);
}

template <class Value>
Value at(const std::vector<std::byte>& bytes, std::size_t offset) {
  Value value;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

TEST_F(Lifecycle, SetupMakesAFreshInstance) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  EXPECT_EQ(table_.bytes(handle()).size(), 5196u);
  const auto& bytes = table_.bytes(handle());
  EXPECT_EQ(at<std::int32_t>(bytes, 0), 4);
  EXPECT_EQ(at<std::int32_t>(bytes, 4), 2);
  EXPECT_EQ(at<std::int32_t>(bytes, 8), 14);
  EXPECT_EQ(at<std::int32_t>(bytes, 12), 10);
  EXPECT_EQ(at<std::int32_t>(bytes, 16), 30);
  EXPECT_EQ(at<std::uint32_t>(bytes, 20), 0u);
  EXPECT_EQ(at<std::uint32_t>(bytes, 24), 1760u);
  EXPECT_EQ(at<std::uint32_t>(bytes, 36), 123000u);
  EXPECT_EQ(at<std::uint32_t>(bytes, 48), 80u);
  EXPECT_EQ(at<std::uint32_t>(bytes, 88), 4u * 80 + 1760 + 123000);
  EXPECT_EQ(at<std::uint8_t>(bytes, 98), 1);
  EXPECT_EQ(levels(Levels::inputLuminance), std::vector<double>(10, -1.0));
  EXPECT_EQ(levels(Levels::inputSpread), std::vector<double>(10, 0.0));
  EXPECT_EQ(levels(Levels::desiredLuminance), std::vector<double>(10, 0.0));
  EXPECT_EQ(levels(Levels::desiredSpread), std::vector<double>(10, 0.0));
  EXPECT_EQ(table_.live(), kHandlesOfInstance);
  EXPECT_EQ(table_.locks(), 0);
  setdown();
  EXPECT_EQ(table_.live(), 0u);
}

TEST_F(Lifecycle, SetupRoundsTheFrameCount) {
  in_.total_time = 1049;
  ASSERT_EQ(setupSequence(in_, out_), 0);
  EXPECT_EQ(header().frameCount, 10);
  setdown();
  in_.total_time = 1050;
  ASSERT_EQ(setupSequence(in_, out_), 0);
  EXPECT_EQ(header().frameCount, 11);
}

TEST_F(Lifecycle, SetupWithoutATimeStepHasNoFrames) {
  in_.time_step = 0;
  ASSERT_EQ(setupSequence(in_, out_), 0);
  EXPECT_EQ(header().frameCount, 0);
  EXPECT_EQ(table_.live(), 1u);
}

TEST_F(Lifecycle, SetupForRenderingOnlyKeepsNoRecords) {
  in_.in_flags = 1;
  ASSERT_EQ(setupSequence(in_, out_), 0);
  EXPECT_EQ(+header().frameStats, 0u);
  EXPECT_EQ(+header().histogramCache, 0u);
  EXPECT_EQ(flatImage().size(), 5196u + 32 * 10);
}

TEST_F(Lifecycle, SetupReplacesWhatTheOutputHeld) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  ASSERT_EQ(setupSequence(in_, out_), 0);
  EXPECT_EQ(table_.live(), kHandlesOfInstance);
}

TEST_F(Lifecycle, SetupRefusesMoreFramesThanTheRecordsCanCount) {
  in_.time_step = 1;
  in_.total_time = 24403224;
  EXPECT_EQ(setupSequence(in_, out_), PF_Err_OUT_OF_MEMORY);
  EXPECT_EQ(table_.live(), 1u) << "the header alone";
  setdown();
  EXPECT_EQ(table_.live(), 0u);
}

TEST_F(Lifecycle, SetupSurvivesEveryRefusedAllocation) {
  for (int n = 1; n <= 8; ++n) {
    SCOPED_TRACE(n);
    table_.refuseNew(n);
    const std::int32_t result = setupSequence(in_, out_);
    EXPECT_EQ(result, n <= 7 ? PF_Err_OUT_OF_MEMORY : 0);
    if (n == 1) {
      EXPECT_EQ(handle(), nullptr);
    }
    if (n > 1 && n <= 7) {
      EXPECT_EQ(table_.live(), 1u);
      EXPECT_EQ(table_.locks(), 1) << "left locked on purpose";
      EXPECT_EQ(header().levelArrayBytes, 0u);
      EXPECT_EQ(header().frameStatsBytes, 0u);
      table_.unlock(handle());
    }
    table_.refuseNew(0);
    setdown();
    EXPECT_EQ(table_.live(), 0u);
  }
}

TEST_F(Lifecycle, SetupWhoseHeaderWillNotLockLeavesNothing) {
  table_.refuseLock(1);
  EXPECT_EQ(setupSequence(in_, out_), PF_Err_INTERNAL_STRUCT_DAMAGED);
  EXPECT_EQ(handle(), nullptr);
  EXPECT_EQ(table_.live(), 0u);
}

TEST_F(Lifecycle, FlatCopyKeepsEverythingAndTheLiveData) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  setLevel(Levels::inputLuminance, 3, 77.5);
  setLevel(Levels::desiredSpread, 9, 12.25);
  storeFrame(4);
  void** live = handle();
  ASSERT_EQ(flattenSequence(in_, out_, false), 0);
  void** image = out_.sequence_data;
  EXPECT_NE(image, live);
  const std::vector<std::byte> bytes = table_.bytes(image);
  EXPECT_EQ(bytes.size(), 5196u + 32 * 10 + 176 * 10 + 123000);
  EXPECT_EQ(at<std::uint8_t>(bytes, 99), 1);
  EXPECT_EQ(at<std::uint32_t>(bytes, 20), 5196u);
  EXPECT_EQ(at<double>(bytes, 5196 + 8 * 3), 77.5);
  EXPECT_EQ(at<double>(bytes, 5196 + 80 * 3 + 8 * 9), 12.25);
  EXPECT_EQ(at<std::int32_t>(bytes, 5196 + 320 + 176 * 4), 4);
  EXPECT_EQ(at<std::int32_t>(bytes, 5196 + 320 + 1760), 4) << "first slot of the cache";
  EXPECT_EQ(table_.locks(), 0);
  table_.dispose(image);
  out_.sequence_data = live;
  EXPECT_EQ(header().flattened, 0);
  setdown();
  EXPECT_EQ(table_.live(), 0u);
}

TEST_F(Lifecycle, RoundTripRestoresLevelsRecordsAndHistograms) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  setLevel(Levels::inputLuminance, 3, 77.5);
  setLevel(Levels::desiredLuminance, 4, 300.0);
  setLevel(Levels::desiredLuminance, 5, 200.0);
  setLevel(Levels::desiredSpread, 5, kNan);
  setLevel(Levels::inputSpread, 6, std::numeric_limits<double>::infinity());
  setLevel(Levels::inputSpread, 7, 1000.0);
  storeFrame(4);
  SequenceState state = header();
  state.analysisComplete = 1;
  state.changeCounter = 41;
  setHeader(state);
  void** first = handle();
  const std::vector<std::byte> image = flatImage();
  out_.sequence_data = first;
  setdown();

  open(image);
  EXPECT_EQ(table_.live(), kHandlesOfInstance);
  EXPECT_EQ(table_.locks(), 0);
  EXPECT_EQ(header().analysisComplete, 1);
  EXPECT_EQ(header().changeCounter, 41u);
  EXPECT_EQ(header().flattened, 0);
  EXPECT_EQ(header().frameStatsBytes, 1760u);
  EXPECT_EQ(levels(Levels::inputLuminance)[3], 77.5);
  EXPECT_EQ(levels(Levels::desiredLuminance)[4], -1.0);
  EXPECT_EQ(levels(Levels::desiredLuminance)[5], 200.0);
  EXPECT_EQ(levels(Levels::desiredSpread)[5], -1.0);
  EXPECT_EQ(levels(Levels::inputSpread)[6], -1.0);
  EXPECT_EQ(levels(Levels::inputSpread)[7], 1000.0);
  FrameHistogram histogram;
  EXPECT_EQ(fetchStats(4, histogram).pixelCount, 104);
  EXPECT_EQ(histogram.luminance[7], 1004u);
}

TEST_F(Lifecycle, FlattenTwiceGivesTheSameImage) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  ASSERT_EQ(flattenSequence(in_, out_, true), 0);
  void** image = handle();
  ASSERT_EQ(flattenSequence(in_, out_, true), 0);
  EXPECT_EQ(handle(), image);
}

TEST_F(Lifecycle, FlattenedInstanceComesBackWithoutLeaks) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  ASSERT_EQ(flattenSequence(in_, out_, true), 0);
  EXPECT_EQ(table_.live(), 7u) << "the image, and six arrays that wait for it";
  ASSERT_EQ(resetupSequence(in_, out_), 0);
  EXPECT_EQ(table_.live(), kHandlesOfInstance);
  ASSERT_EQ(flattenSequence(in_, out_, true), 0);
  setdown();
  EXPECT_EQ(table_.live(), 0u);
}

TEST_F(Lifecycle, ArraysOfAnImageThatTheHostDroppedGoAtTheEnd) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  ASSERT_EQ(flattenSequence(in_, out_, true), 0);
  table_.dispose(handle());
  EXPECT_EQ(table_.live(), 6u);
  releaseRegistry(in_);
  EXPECT_EQ(table_.live(), 0u);
}

TEST_F(Lifecycle, OtherHostsKeepTheirs) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  ASSERT_EQ(flattenSequence(in_, out_, true), 0);
  PF_InData other = in_;
  other.global_data = table_.create(1);
  releaseRegistry(other);
  EXPECT_EQ(table_.live(), 8u);
  table_.dispose(other.global_data);
  setdown();
  EXPECT_EQ(table_.live(), 0u);
}

TEST_F(Lifecycle, FlattenSurvivesRefusals) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  void** live = handle();
  table_.refuseNew(1);
  EXPECT_EQ(flattenSequence(in_, out_, true), PF_Err_INTERNAL_STRUCT_DAMAGED);
  EXPECT_EQ(handle(), live);
  table_.refuseLock(1);
  EXPECT_EQ(flattenSequence(in_, out_, true), PF_Err_INTERNAL_STRUCT_DAMAGED);
  table_.refuseLock(2);
  EXPECT_EQ(flattenSequence(in_, out_, true), 0);
  EXPECT_EQ(handle(), live) << "the image would not lock";
  table_.refuseLock(2);
  EXPECT_EQ(flattenSequence(in_, out_, false), 0);
  EXPECT_EQ(handle(), nullptr) << "the host must not own the live handle twice";
  EXPECT_EQ(table_.live(), kHandlesOfInstance);
  out_.sequence_data = live;
  setdown();
  EXPECT_EQ(table_.live(), 0u);
}

TEST_F(Lifecycle, FlattenLeavesOutArraysThatWillNotLock) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  setLevel(Levels::inputSpread, 0, 5.0);
  table_.refuseLock(3);  // header, image, input levels
  ASSERT_EQ(flattenSequence(in_, out_, true), 0);
  EXPECT_EQ(at<double>(table_.bytes(handle()), 5196), 5.0) << "the spreads moved up";
}

TEST_F(Lifecycle, ResetupKeepsLiveData) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  setLevel(Levels::inputLuminance, 3, 77.5);
  void** live = handle();
  EXPECT_EQ(resetupSequence(in_, out_), 0);
  EXPECT_EQ(handle(), live);
  EXPECT_EQ(levels(Levels::inputLuminance)[3], 77.5);
  EXPECT_EQ(table_.locks(), 0);
}

TEST_F(Lifecycle, ResetupWithoutDataDoesNothing) {
  EXPECT_EQ(resetupSequence(in_, out_), 0);
  EXPECT_EQ(handle(), nullptr);
}

TEST_F(Lifecycle, ImitatedLiveDataIsNotFollowed) {
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

TEST_F(Lifecycle, TruncatedImagesGiveAFreshInstance) {
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

TEST_F(Lifecycle, InconsistentImagesGiveAFreshInstance) {
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

TEST_F(Lifecycle, TheSavedFrameCountWins) {
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

TEST_F(Lifecycle, ImagesWithoutRecordsLeaveThemFresh) {
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

TEST_F(Lifecycle, RenderingCopiesDropTheRecordsOfAnImage) {
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

TEST_F(Lifecycle, CachesOfAnotherSizeBelongToTheFirstFrames) {
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

TEST_F(Lifecycle, ShortHeadersAreFilledUp) {
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

TEST_F(Lifecycle, ReadsThePreviousVersion) {
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

TEST_F(Lifecycle, ThePreviousVersionMustFitTheLayer) {
  open(image13(9));
  expectFresh(10);
  setdown();
  open(image13(11));
  expectFresh(10);
}

TEST_F(Lifecycle, ResetupSurvivesEveryRefusedAllocationAndLock) {
  setFrames(12);
  ASSERT_EQ(setupSequence(in_, out_), 0);
  storeFrame(2);
  void** first = handle();
  const std::vector<std::byte> image = flatImage();
  out_.sequence_data = first;
  setdown();
  setFrames(10);  // so that the arrays are made twice
  for (const bool refuseLocks : {false, true}) {
    for (int n = 1; n < 60; ++n) {
      SCOPED_TRACE(n);
      out_.sequence_data = table_.createFrom(image);
      refuseLocks ? table_.refuseLock(n) : table_.refuseNew(n);
      const std::int32_t result = resetupSequence(in_, out_);
      const bool refused = !table_.refusalsPending();
      table_.refuseNew(0);
      table_.refuseLock(0);
      EXPECT_TRUE(result == 0 || result == 4 || result == 512) << result;
      if (result == 0) {
        EXPECT_EQ(table_.locks(), 0);
      }
      if (result == 4 && handle() != nullptr) table_.unlock(handle());
      setdown();
      EXPECT_EQ(table_.live(), 0u);
      EXPECT_EQ(table_.violations(), 0);
      if (!refused) break;
    }
  }
}

TEST_F(Lifecycle, InvalidationDropsWhatItPromises) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  for (std::int32_t frame = 0; frame < 10; ++frame) storeFrame(frame);
  setLevel(Levels::inputLuminance, 0, 50.0);
  setLevel(Levels::desiredLuminance, 0, 60.0);
  SequenceState state = header();
  EXPECT_TRUE(countAnalyzedFrames(in_, state));
  EXPECT_STREQ(state.statusText, "10 of 10 frames analyzed");
  state.analysisComplete = 1;
  state.currentStats.frame = 5;

  invalidateDesired(in_, state);
  EXPECT_EQ(state.analysisComplete, 0);
  EXPECT_EQ(state.currentStats.frame, -1);
  EXPECT_STREQ(state.statusText, "0 of 10 frames analyzed");
  EXPECT_FALSE(countAnalyzedFrames(in_, state));
  setHeader(state);
  EXPECT_EQ(levels(Levels::inputLuminance)[0], 50.0);
  EXPECT_EQ(levels(Levels::desiredLuminance), std::vector<double>(10, -1.0));
  FrameHistogram histogram;
  EXPECT_EQ(fetchStats(3, histogram).pixelCount, 103) << "what was measured stays";

  invalidateAll(in_, state);
  setHeader(state);
  EXPECT_EQ(levels(Levels::inputLuminance), std::vector<double>(10, -1.0));
  EXPECT_EQ(levels(Levels::inputSpread), std::vector<double>(10, -1.0));
  EXPECT_EQ(fetchStats(3, histogram).frame, -1);
  EXPECT_EQ(table_.locks(), 0);
}

TEST_F(Lifecycle, NoFramesAndNoRecordsCountAsAnalyzed) {
  in_.time_step = 0;
  ASSERT_EQ(setupSequence(in_, out_), 0);
  SequenceState state = header();
  EXPECT_TRUE(countAnalyzedFrames(in_, state));
  EXPECT_STREQ(state.statusText, "0 of 0 frames analyzed");
  in_.time_step = 100;
  in_.in_flags = 1;
  ASSERT_EQ(setupSequence(in_, out_), 0);
  state = header();
  EXPECT_TRUE(countAnalyzedFrames(in_, state));
  EXPECT_STREQ(state.statusText, "0 of 10 frames analyzed");
}

TEST_F(Lifecycle, RecordsThatWillNotLockCountAsUnanalyzed) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  SequenceState state = header();
  std::strcpy(state.statusText, "kept");
  table_.refuseLock(1);
  EXPECT_FALSE(countAnalyzedFrames(in_, state));
  EXPECT_STREQ(state.statusText, "kept");
}

}  // namespace
}  // namespace varilum
