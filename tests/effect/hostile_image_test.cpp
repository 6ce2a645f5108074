// tests/effect/hostile_image_test.cpp — damaged saved data start a fresh instance and do no harm.
#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "tests/effect/test_footage.h"

namespace effect_test {
namespace {

using host::Depth;
using host::Image;
using host::Instance;
using host::SavedInstance;

constexpr std::int32_t kFrames = 7;

class HostileImage : public ::testing::Test {
 protected:
  HostileImage() : footage_(flickeringFootage(40, 30, kFrames, Depth::bits8)) {
    Instance fx{visit_.effect(), footage_};
    fx.press("Analyze");
    good_ = fx.save();
  }

  template <typename T>
  void put(SavedInstance& saved, std::size_t offset, T value) {
    std::memcpy(saved.sequenceData.data() + offset, &value, sizeof value);
  }

  // Opens, uses and closes it. True when the analysis survived.
  bool survives(const SavedInstance& saved) {
    Instance fx = Instance::open(visit_.effect(), footage_, saved);
    Image out;
    fx.render(3, Depth::bits8, out);
    const SavedData now = savedData(fx);
    const bool survived = now.frameCount() > 0 && now.analyzed(0);
    fx.press("Analyze");
    fx.render(2, Depth::bits16, out);
    return survived;
  }

  Visit visit_;
  TestFootage footage_;
  SavedInstance good_;
};

TEST_F(HostileImage, TheWholeImageSurvives) {
  EXPECT_TRUE(survives(good_));
}

TEST_F(HostileImage, ALongerImageSurvives) {
  SavedInstance longer = good_;
  longer.sequenceData.resize(longer.sequenceData.size() + 1000);
  EXPECT_TRUE(survives(longer));
}

TEST_F(HostileImage, TruncationAnywhereStartsAfresh) {
  const std::size_t size = good_.sequenceData.size();
  std::vector<std::size_t> lengths{1, 4, 8, 11, 12, 13, 99, 100, 103, 104, 105, 5195, 5196, 5197};
  for (std::size_t n = 6000; n < size; n += 7919) lengths.push_back(n);
  lengths.push_back(size - 1);
  for (const std::size_t length : lengths) {
    SavedInstance cut = good_;
    cut.sequenceData.resize(length);
    EXPECT_FALSE(survives(cut)) << "cut to " << length;
  }
}

struct Lie {
  const char* what;
  std::size_t offset;
  std::int32_t value;
};

TEST_F(HostileImage, SizesThatDoNotAgreeStartAfresh) {
  for (const Lie lie :
       {Lie{"no frames' bytes", 12, kFrames + 1}, Lie{"fewer frames", 12, 3},
        Lie{"negative frames", 12, -1}, Lie{"huge count", 12, 0x7fffffff},
        Lie{"too many frames", 12, 24403224}, Lie{"negative slots", 16, -30},
        Lie{"more slots", 16, 31}, Lie{"short header", 20, 103}, Lie{"long header", 20, 5197},
        Lie{"negative header", 20, -5196}, Lie{"records", 24, 176 * kFrames - 1},
        Lie{"cache", 36, 122999}, Lie{"levels", 48, 8 * kFrames + 8}, Lie{"not flat", 96, 0}}) {
    SavedInstance saved = good_;
    if (lie.offset == 96) {
      put(saved, 99, std::uint8_t{0});
    } else {
      put(saved, lie.offset, lie.value);
    }
    EXPECT_FALSE(survives(saved)) << lie.what;
  }
}

TEST_F(HostileImage, RecordsThatPointNowhereDoNoHarm) {
  SavedInstance saved = good_;
  for (std::int32_t i = 0; i < kFrames; ++i) {
    const std::size_t record = 5196 + 32 * kFrames + 176 * static_cast<std::size_t>(i);
    put(saved, record, std::int32_t{0x40000000});
    put(saved, record + 4, std::int32_t{i % 2 == 0 ? -77 : 0x7fffffff});
  }
  for (std::size_t slot = 0; slot < 30; ++slot) {
    put(saved, 5196 + 208 * kFrames + 4100 * slot, std::int32_t{INT32_MIN});
  }
  EXPECT_TRUE(survives(saved));
}

TEST_F(HostileImage, HandlesInAnImageAreNeverFollowed) {
  SavedInstance saved = good_;
  for (const std::size_t handle : {28u, 40u, 52u, 60u, 68u, 76u}) {
    put(saved, handle, std::uint64_t{0xdeadbeefdeadbeef});
  }
  EXPECT_TRUE(survives(saved));
}

TEST_F(HostileImage, RandomDamageDoesNoHarm) {
  const auto seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random{seed};
  for (int round = 0; round < 300; ++round) {
    SavedInstance saved = good_;
    const auto flips = 1 + random() % 20;
    for (unsigned i = 0; i < flips; ++i) {
      // Half of the damage where it matters most.
      const std::size_t range = random() % 2 == 0 ? 104 : saved.sequenceData.size();
      saved.sequenceData[random() % range] = static_cast<std::byte>(random());
    }
    if (random() % 4 == 0) saved.sequenceData.resize(1 + random() % saved.sequenceData.size());
    survives(saved);
  }
}

}  // namespace
}  // namespace effect_test
