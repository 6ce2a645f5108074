// tests/plugin/instance_fixture.h — one instance's data in host memory for tests.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <vector>

#include "stats/lifecycle.h"
#include "stats/live_registry.h"
#include "stats/sequence_arrays.h"
#include "tests/plugin/handle_table.h"

namespace varilum {

inline constexpr std::size_t kHandlesOfInstance = 7;  // header, records, cache, four arrays
// Positions among an instance's arrays.
enum class Levels { inputLuminance = 2, inputSpread, desiredLuminance, desiredSpread };

inline constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

// A layer of 10 frames. At the end nothing may have been touched that was not alive.
class InstanceFixture : public ::testing::Test {
 protected:
  InstanceFixture() {
    in_.utils = table_.utils();
    in_.time_step = 100;
    in_.time_scale = 2500;
    setFrames(10);
  }
  ~InstanceFixture() override {
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

}  // namespace varilum
