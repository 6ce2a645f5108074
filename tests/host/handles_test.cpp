// tests/host/handles_test.cpp — locks that nest, data that moves, handles that are no more.
#include "host/handles.h"

#include <gtest/gtest.h>

#include <cstring>
#include <thread>
#include <vector>

#include "host/host_state.h"
#include "tests/host/recording_listener.h"

namespace {

host::HostOptions withStress(host::Stress stress) {
  host::HostOptions options;
  options.stress = stress;
  return options;
}

TEST(Handles, areAlignedAndExactAndDereferenceToTheirData) {
  host::Host ae(host::Role::afterEffects);
  for (const std::uint64_t bytes : {0u, 1u, 7u, 5196u}) {
    void** handle = host::createHandle(ae.state(), bytes);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(host::handleSize(handle), bytes);
    void* data = host::lockHandle(handle);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(data) % 16, 0u);
    EXPECT_EQ(*handle, data);
    host::disposeHandle(handle);
  }
  EXPECT_TRUE(ae.outstanding().nothing());
}

TEST(Handles, dataStaysWhileAnyLockIsHeldAndMovesAfterTheLast) {
  host::Host ae(host::Role::afterEffects, {}, withStress({.moveHandles = true}));
  void** handle = host::createHandle(ae.state(), 64);
  auto* data = static_cast<unsigned char*>(host::lockHandle(handle));
  for (unsigned char i = 0; i < 64; ++i) data[i] = i;
  EXPECT_EQ(host::lockHandle(handle), data);
  host::unlockHandle(handle);
  EXPECT_EQ(*handle, data);
  EXPECT_EQ(ae.outstanding().locks, 1);
  host::unlockHandle(handle);
  auto* moved = static_cast<unsigned char*>(host::lockHandle(handle));
  EXPECT_NE(moved, data);
  for (unsigned char i = 0; i < 64; ++i) EXPECT_EQ(moved[i], i);
  host::unlockHandle(handle);
  host::disposeHandle(handle);
}

TEST(Handles, freshMemoryIsNotZeroUnderPoison) {
  host::Host ae(host::Role::afterEffects, {}, withStress({.poisonMemory = true}));
  void** handle = host::createHandle(ae.state(), 32);
  const auto* data = static_cast<unsigned char*>(host::lockHandle(handle));
  for (int i = 0; i < 32; ++i) EXPECT_EQ(data[i], 0xCD);
  host::unlockHandle(handle);
  host::disposeHandle(handle);
}

TEST(Handles, resizeKeepsTheCommonPart) {
  host::Host ae(host::Role::afterEffects);
  void** handle = host::createHandle(ae.state(), 4);
  std::memcpy(host::lockHandle(handle), "abcd", 4);
  host::unlockHandle(handle);
  ASSERT_TRUE(host::resizeHandle(handle, 1000));
  EXPECT_EQ(host::handleSize(handle), 1000u);
  EXPECT_EQ(std::memcmp(host::lockHandle(handle), "abcd", 4), 0);
  host::unlockHandle(handle);
  ASSERT_TRUE(host::resizeHandle(handle, 2));
  EXPECT_EQ(host::handleSize(handle), 2u);
  EXPECT_EQ(std::memcmp(*handle, "ab", 2), 0);
  host::disposeHandle(handle);
}

TEST(Handles, deadAndForeignHandlesAreReportedAndSurvived) {
  host::Host ae(host::Role::afterEffects);
  RecordingListener listener;
  ae.setListener(&listener);
  void** handle = host::createHandle(ae.state(), 8);
  host::disposeHandle(handle);
  EXPECT_EQ(listener.complaints(), "");
  host::disposeHandle(handle);
  EXPECT_EQ(host::lockHandle(handle), nullptr);
  EXPECT_EQ(host::handleSize(handle), 0u);
  void* mine = nullptr;
  host::unlockHandle(&mine);
  EXPECT_EQ(listener.texts(host::MessageKind::protocol).size(), 4u);
  host::disposeHandle(nullptr);
  EXPECT_EQ(listener.texts(host::MessageKind::protocol).size(), 4u);
}

TEST(Handles, oneUnlockTooManyIsReported) {
  host::Host ae(host::Role::afterEffects);
  RecordingListener listener;
  ae.setListener(&listener);
  void** handle = host::createHandle(ae.state(), 8);
  host::unlockHandle(handle);
  EXPECT_EQ(listener.texts(host::MessageKind::protocol).size(), 1u);
  host::disposeHandle(handle);
}

TEST(Handles, whatIsLeftIsCounted) {
  host::Host ae(host::Role::afterEffects);
  void** first = host::createHandle(ae.state(), 8);
  void** second = host::createHandle(ae.state(), 8);
  host::lockHandle(second);
  EXPECT_EQ(ae.outstanding().describe(), "2 handles, 1 lock");
  host::markKept(second);
  EXPECT_EQ(ae.outstanding().describe(), "1 handle");
  host::disposeHandle(first);
  host::disposeHandle(second);
  EXPECT_EQ(ae.outstanding().describe(), "nothing");
}

TEST(Handles, manyThreadsAtOnce) {
  host::Host ae(host::Role::afterEffects, {}, withStress({.moveHandles = true}));
  void** shared = host::createHandle(ae.state(), sizeof(int) * 4);
  std::memset(host::lockHandle(shared), 0, sizeof(int) * 4);
  host::unlockHandle(shared);
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < 4; ++t) {
    threads.emplace_back([&ae, shared, t] {
      for (int i = 0; i < 2000; ++i) {
        void** own = host::createHandle(ae.state(), 24);
        static_cast<int*>(host::lockHandle(shared))[t] += 1;
        host::unlockHandle(shared);
        host::disposeHandle(own);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (std::size_t t = 0; t < 4; ++t) EXPECT_EQ(static_cast<int*>(*shared)[t], 2000);
  host::disposeHandle(shared);
  EXPECT_TRUE(ae.outstanding().nothing());
}

}  // namespace
