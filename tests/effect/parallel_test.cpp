// tests/effect/parallel_test.cpp — copies render different frames at the same time, all alike.
#include <gtest/gtest.h>

#include <thread>

#include "tests/effect/test_footage.h"

namespace effect_test {
namespace {

using host::Depth;
using host::Image;
using host::Instance;

TEST(RenderCopies, AgreeWhateverTheyRenderedBefore) {
  constexpr std::int32_t kFrames = 24;
  for (const Depth depth : {Depth::bits8, Depth::bits16, Depth::float32}) {
    TestFootage footage = flickeringFootage(64, 48, kFrames, depth);
    Visit visit;
    Instance fx{visit.effect(), footage};
    fx.param("Number of smoothing frames").set(3);
    fx.param("Correction method").set(depth == Depth::bits8 ? 3 : 2);
    fx.press("Analyze");

    std::vector<Image> alone(kFrames);
    for (std::int32_t i = 0; i < kFrames; ++i) {
      fx.render(i, depth, alone[static_cast<std::size_t>(i)]);
    }

    constexpr std::int32_t kThreads = 4;
    std::vector<host::RenderCopy> copies;
    for (std::int32_t t = 0; t < kThreads; ++t) copies.push_back(fx.renderCopy());
    std::vector<Image> together(kFrames);
    std::vector<std::thread> threads;
    for (std::int32_t t = 0; t < kThreads; ++t) {
      threads.emplace_back([&, t] {
        // Each thread in an order of its own.
        for (std::int32_t n = 0; n < kFrames / kThreads; ++n) {
          const std::int32_t i = t + kThreads * (t % 2 == 0 ? n : kFrames / kThreads - 1 - n);
          copies[static_cast<std::size_t>(t)].render(i, depth,
                                                     together[static_cast<std::size_t>(i)]);
        }
      });
    }
    for (std::thread& thread : threads) thread.join();
    for (std::int32_t i = 0; i < kFrames; ++i) {
      const auto n = static_cast<std::size_t>(i);
      SCOPED_TRACE(i);
      expectSame(alone[n], together[n]);
    }
  }
}

TEST(RenderCopies, LiveBesideAnInstanceThatIsEdited) {
  TestFootage footage = flickeringFootage(64, 48, 8, Depth::bits8);
  Visit visit;
  Instance fx{visit.effect(), footage};
  fx.press("Analyze");
  host::RenderCopy copy = fx.renderCopy();
  std::thread renderer([&] {
    Image out;
    for (int round = 0; round < 10; ++round) {
      for (std::int32_t i = 0; i < 8; ++i) copy.render(i, Depth::bits8, out);
    }
  });
  for (int round = 0; round < 5; ++round) {
    fx.param("Number of smoothing frames").set(round + 1);
    fx.press(round % 2 == 0 ? "Analyze" : "Clear");
  }
  renderer.join();
}

TEST(CacheKey, FollowsTheTargetAndTheCounter) {
  TestFootage footage = flickeringFootage(64, 48, 4, Depth::bits8);
  Visit visit;
  Instance fx{visit.effect(), footage};
  fx.press("Analyze");
  Image out;
  const auto keyOf = [&](std::int32_t frame) {
    host::RenderCopy copy = fx.renderCopy();
    copy.render(frame, Depth::bits8, out);
    return copy.lastCacheKey();
  };
  const std::string first = keyOf(1);
  EXPECT_EQ(keyOf(1), first);
  EXPECT_NE(keyOf(2), first);
  fx.param("Number of smoothing frames").set(1);
  EXPECT_NE(keyOf(1), first);
}

}  // namespace
}  // namespace effect_test
