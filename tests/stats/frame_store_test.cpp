// tests/stats/frame_store_test.cpp — which slot keeps which frame.
// (Unary plus copies a packed field out: a reference to it would be misaligned.)
#include "stats/frame_store.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <vector>

namespace varilum {
namespace {

struct Store {
  explicit Store(std::size_t frameCount, std::size_t slotCount = 30)
      : frames(frameCount), slots(slotCount) {
    clearAllFrameStats(frames, slots);
  }

  // Stores a frame with a mark in its records; returns the slot chosen.
  std::int32_t put(std::int32_t frame, std::int32_t slot = -1) {
    FrameStats stats;
    resetFrameStats(stats);
    stats.frame = frame;
    stats.slot = slot;
    stats.inputLuminance = frame + 0.5;
    FrameHistogram histogram;
    resetFrameHistogram(histogram);
    histogram.red[1] = static_cast<std::uint32_t>(frame) + 1000;
    storeFrameStats(frames, slots, frame, stats, histogram);
    lastHistogramFrame = histogram.frame;
    return stats.slot;
  }

  std::vector<FrameStats> frames;
  std::vector<FrameHistogram> slots;
  std::int32_t lastHistogramFrame = -2;
};

TEST(StoreFrameStats, WritesSlotAndFrameBackToTheCaller) {
  Store store(100);
  EXPECT_EQ(store.put(40), 0);
  EXPECT_EQ(store.lastHistogramFrame, 40);
  EXPECT_EQ(store.frames[40].slot, 0);
  EXPECT_EQ(+store.frames[40].inputLuminance, 40.5);
  EXPECT_EQ(store.slots[0].frame, 40);
  EXPECT_EQ(store.slots[0].red[1], 1040u);
}

TEST(StoreFrameStats, TakesAnEmptySlotWhileItIsTheFarthest) {
  Store store(100);
  for (int i = 0; i < 30; ++i) EXPECT_EQ(store.put(i), i);
}

TEST(StoreFrameStats, EvictsTheFarthestFrameWithThe31st) {
  Store store(1000);
  for (int i = 0; i < 30; ++i) store.put(100 + i);
  EXPECT_EQ(store.put(130), 0);  // frame 100 was farthest
  EXPECT_EQ(store.put(101), 1);  // still held
  EXPECT_EQ(store.put(90), 0);   // now frame 130 is farthest
}

TEST(StoreFrameStats, PrefersAFrameFartherThanTheEmptySlots) {
  Store store(1000);
  store.put(900);
  // From frame 10 an empty slot is 11 away, frame 900 is 890 away.
  EXPECT_EQ(store.put(10), 0);
}

TEST(StoreFrameStats, ReusesTheSlotThatHoldsTheFrame) {
  Store store(100);
  store.put(5);
  store.put(6);
  store.put(7);
  EXPECT_EQ(store.put(6), 1);      // found by search
  EXPECT_EQ(store.put(6, 1), 1);   // by its own slot
  EXPECT_EQ(store.put(6, 2), 1);   // a slot that holds another frame is not believed
  EXPECT_EQ(store.put(6, 30), 1);  // nor one that does not exist
  EXPECT_EQ(store.put(6, -7), 1);
  EXPECT_EQ(store.put(6, std::numeric_limits<std::int32_t>::max()), 1);
}

TEST(StoreFrameStats, TakesTheOwnSlotFirstWhenTwoHoldTheFrame) {
  Store store(100);
  store.slots[3].frame = 8;
  store.slots[9].frame = 8;
  EXPECT_EQ(store.put(8, 9), 9);
  EXPECT_EQ(store.put(8), 3);
}

TEST(StoreFrameStats, ClampsTheFrame) {
  Store store(10);
  FrameStats stats;
  FrameHistogram histogram;
  resetFrameStats(stats);
  resetFrameHistogram(histogram);
  storeFrameStats(store.frames, store.slots, 99, stats, histogram);
  EXPECT_EQ(histogram.frame, 9);
  EXPECT_EQ(store.frames[9].slot, 0);
  storeFrameStats(store.frames, store.slots, -99, stats, histogram);
  EXPECT_EQ(histogram.frame, 0);
}

TEST(StoreFrameStats, MeasuresDistancesToAnyStoredIndexWithoutOverflow) {
  Store store(10);
  for (FrameHistogram& slot : store.slots) slot.frame = 5;
  store.slots[7].frame = std::numeric_limits<std::int32_t>::min();
  store.slots[8].frame = std::numeric_limits<std::int32_t>::max();
  EXPECT_EQ(store.put(9), 7);
}

TEST(StoreFrameStats, DoesNothingWithoutFramesOrSlots) {
  FrameStats stats;
  FrameHistogram histogram;
  resetFrameStats(stats);
  resetFrameHistogram(histogram);
  Store noFrames(0);
  storeFrameStats(noFrames.frames, noFrames.slots, 3, stats, histogram);
  EXPECT_EQ(stats.slot, -1);
  EXPECT_EQ(histogram.frame, -1);
  EXPECT_EQ(noFrames.slots[0].frame, -1);
  Store noSlots(5, 0);
  storeFrameStats(noSlots.frames, noSlots.slots, 3, stats, histogram);
  EXPECT_EQ(stats.slot, -1);
  EXPECT_EQ(noSlots.frames[3].frame, -1);
}

TEST(FetchFrameStats, ReturnsWhatWasStored) {
  Store store(100);
  store.put(41);
  store.put(42);
  FrameStats stats;
  FrameHistogram histogram;
  fetchFrameStats(store.frames, store.slots, 42, stats, histogram);
  EXPECT_EQ(stats.frame, 42);
  EXPECT_EQ(stats.slot, 1);
  EXPECT_EQ(+stats.inputLuminance, 42.5);
  EXPECT_EQ(histogram.frame, 42);
  EXPECT_EQ(histogram.red[1], 1042u);
}

TEST(FetchFrameStats, FindsAHistogramThatTheRecordLostAndRemembersIt) {
  Store store(100);
  store.put(41);
  store.put(42);
  for (const std::int32_t lost : {-1, 0, 30, -5, 1000000}) {
    store.frames[42].slot = lost;
    FrameStats stats;
    FrameHistogram histogram;
    fetchFrameStats(store.frames, store.slots, 42, stats, histogram);
    EXPECT_EQ(stats.slot, 1);
    EXPECT_EQ(store.frames[42].slot, 1);
    EXPECT_EQ(histogram.red[1], 1042u);
  }
}

TEST(FetchFrameStats, GivesAZeroHistogramForAnEvictedFrameButItsStatistics) {
  Store store(100);
  store.put(42);
  store.slots[0].frame = 43;
  FrameStats stats;
  FrameHistogram histogram;
  std::memset(&histogram, 1, sizeof histogram);
  fetchFrameStats(store.frames, store.slots, 42, stats, histogram);
  EXPECT_EQ(+stats.inputLuminance, 42.5);
  EXPECT_EQ(stats.slot, -1);
  EXPECT_EQ(store.frames[42].slot, -1);
  FrameHistogram expected;
  resetFrameHistogram(expected);
  expected.frame = 42;
  EXPECT_EQ(std::memcmp(&histogram, &expected, sizeof expected), 0);
}

TEST(FetchFrameStats, CopiesAFreshRecordWithItsOwnIndex) {
  Store store(100);
  FrameStats stats;
  FrameHistogram histogram;
  fetchFrameStats(store.frames, store.slots, 42, stats, histogram);
  EXPECT_EQ(stats.frame, -1);
  EXPECT_EQ(histogram.frame, 42);
}

TEST(FetchFrameStats, ClampsTheFrame) {
  Store store(10);
  store.put(9);
  FrameStats stats;
  FrameHistogram histogram;
  fetchFrameStats(store.frames, store.slots, 4000, stats, histogram);
  EXPECT_EQ(histogram.frame, 9);
  EXPECT_EQ(stats.frame, 9);
  fetchFrameStats(store.frames, store.slots, -4000, stats, histogram);
  EXPECT_EQ(histogram.frame, 0);
}

TEST(FetchFrameStats, IsFreshWithTheIndexWithoutFramesOrSlots) {
  Store noFrames(0);
  Store noSlots(5, 0);
  for (Store* store : {&noFrames, &noSlots}) {
    FrameStats stats;
    FrameHistogram histogram;
    std::memset(&stats, 1, sizeof stats);
    std::memset(&histogram, 1, sizeof histogram);
    fetchFrameStats(store->frames, store->slots, 3, stats, histogram);
    EXPECT_EQ(stats.frame, 3);
    EXPECT_EQ(stats.slot, -1);
    EXPECT_EQ(stats.analyzed, 0);
    EXPECT_EQ(histogram.frame, 3);
    EXPECT_EQ(histogram.blue[255], 0u);
  }
}

TEST(ClearAllFrameStats, MakesEveryRecordFresh) {
  Store store(5, 3);
  std::memset(static_cast<void*>(store.frames.data()), 7, 5 * sizeof(FrameStats));
  std::memset(static_cast<void*>(store.slots.data()), 7, 3 * sizeof(FrameHistogram));
  clearAllFrameStats(store.frames, store.slots);
  for (const FrameStats& stats : store.frames) {
    EXPECT_EQ(stats.frame, -1);
    EXPECT_EQ(stats.slot, -1);
    EXPECT_EQ(stats.analyzed, 0);
    EXPECT_EQ(stats.carried96[79], 0);
  }
  for (const FrameHistogram& slot : store.slots) {
    EXPECT_EQ(slot.frame, -1);
    EXPECT_EQ(slot.blue[255], 0u);
  }
}

TEST(AnalyzedFlags, AreCountedAndClearedAlone) {
  Store store(5);
  store.frames[1].analyzed = 1;
  store.frames[4].analyzed = 200;
  store.frames[4].walked = 1;
  store.frames[4].inputSpread = 2.5;
  EXPECT_EQ(countAnalyzed(store.frames), 2);
  clearAnalyzedFlags(store.frames);
  EXPECT_EQ(countAnalyzed(store.frames), 0);
  EXPECT_EQ(store.frames[4].walked, 1);
  EXPECT_EQ(+store.frames[4].inputSpread, 2.5);
  EXPECT_EQ(countAnalyzed({}), 0);
}

}  // namespace
}  // namespace varilum
