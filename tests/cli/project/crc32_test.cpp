// tests/cli/project/crc32_test.cpp — the checksum against its published check value and in pieces.
#include "cli/project/crc32.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace cli {
namespace {

std::uint32_t of(const std::string& text) {
  return crc32(std::as_bytes(std::span(text)));
}

TEST(Crc32, GivesThePublishedCheckValues) {
  EXPECT_EQ(of(""), 0U);
  EXPECT_EQ(of("123456789"), 0xCBF43926U);
  EXPECT_EQ(of("The quick brown fox jumps over the lazy dog"), 0x414FA339U);
}

TEST(Crc32, InPiecesIsTheSameAsInOne) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 random(seed);
  std::vector<std::byte> bytes(1000);
  for (std::byte& b : bytes) b = static_cast<std::byte>(random() & 255U);
  const std::span<const std::byte> all(bytes);
  for (int i = 0; i < 100; ++i) {
    const std::size_t cut = random() % (bytes.size() + 1);
    EXPECT_EQ(crc32(all.subspan(cut), crc32(all.first(cut))), crc32(all)) << "cut at " << cut;
  }
}

TEST(Crc32, OfAnyLengthAndAlignmentIsTheSameAsByteByByte) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 random(seed);
  std::vector<std::byte> bytes(1100);
  for (std::byte& b : bytes) b = static_cast<std::byte>(random() & 255U);
  for (std::size_t length = 0; length < 1000; ++length) {
    const std::span<const std::byte> some = std::span(bytes).subspan(random() % 100, length);
    const auto before = static_cast<std::uint32_t>(random());
    std::uint32_t expected = before;
    for (const std::byte& b : some) expected = crc32(std::span(&b, 1), expected);
    EXPECT_EQ(crc32(some, before), expected) << length << " bytes";
  }
}

}  // namespace
}  // namespace cli
