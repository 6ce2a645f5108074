// tests/plugin/lifecycle_test.cpp — instances made, saved, opened again and destroyed.
#include "stats/lifecycle.h"

#include "hostapi/commands.h"
#include "tests/plugin/instance_fixture.h"

namespace varilum {
namespace {

class Lifecycle : public InstanceFixture {};

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

}  // namespace
}  // namespace varilum
