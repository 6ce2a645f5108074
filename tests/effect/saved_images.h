// tests/effect/saved_images.h — images of an instance as projects hold them, made by hand.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace effect_test {

// Writes value at offset, which the bytes must reach.
template <typename T>
void put(std::vector<std::byte>& bytes, std::size_t offset, T value) {
  ASSERT_LE(offset + sizeof value, bytes.size());
  std::memcpy(bytes.data() + offset, &value, sizeof value);
}

// An image of the format before the present one, of a layer of 90 x 70 pixels, all frames analysed.
// Frame i has the level 100 + i and the spread 10 + i.
std::vector<std::byte> image13(std::int32_t frames);

}  // namespace effect_test
