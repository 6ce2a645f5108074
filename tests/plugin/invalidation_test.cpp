// tests/plugin/invalidation_test.cpp — what is dropped when the analysis no longer holds.
#include "stats/invalidation.h"

#include "hostapi/commands.h"
#include "tests/plugin/instance_fixture.h"

namespace varilum {
namespace {

class Invalidation : public InstanceFixture {};

TEST_F(Invalidation, InvalidationDropsWhatItPromises) {
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

TEST_F(Invalidation, NoFramesAndNoRecordsCountAsAnalyzed) {
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

TEST_F(Invalidation, RecordsThatWillNotLockCountAsUnanalyzed) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  SequenceState state = header();
  std::strcpy(state.statusText, "kept");
  table_.refuseLock(1);
  EXPECT_FALSE(countAnalyzedFrames(in_, state));
  EXPECT_STREQ(state.statusText, "kept");
}

TEST_F(Invalidation, ALongerLayerDropsTheAnalysis) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  for (std::int32_t frame = 0; frame < 10; ++frame) storeFrame(frame);
  setFrames(11);
  SequenceState state = header();
  EXPECT_EQ(resyncFrameCount(in_, state), 0);
  setHeader(state);
  expectFresh(11);
}

// Memory may be short for a moment only: the layer must not stay without arrays for ever.
TEST_F(Invalidation, ArraysThatMemoryWasShortForAreMadeLater) {
  ASSERT_EQ(setupSequence(in_, out_), 0);
  for (int n = 1; n <= 6; ++n) {
    SCOPED_TRACE(n);
    const std::int32_t frames = 10 + n;
    setFrames(frames);
    SequenceState state = header();
    table_.refuseNew(n);
    EXPECT_EQ(resyncFrameCount(in_, state), PF_Err_OUT_OF_MEMORY);
    setHeader(state);
    EXPECT_EQ(table_.live(), 1u) << "the header alone";
    // Short again: reported once, and no more.
    table_.refuseNew(n);
    EXPECT_EQ(resyncFrameCount(in_, state), 0);
    EXPECT_EQ(resyncFrameCount(in_, state), 0);
    setHeader(state);
    expectFresh(frames);
  }
}

}  // namespace
}  // namespace varilum
