// tests/effect/saved_images.cpp — images of an instance as projects hold them, made by hand.
#include "tests/effect/saved_images.h"

#include <array>

namespace effect_test {

std::vector<std::byte> image13(std::int32_t frames) {
  const auto n = static_cast<std::size_t>(frames);
  std::vector<std::byte> bytes(1068 + 4428 * n);
  put(bytes, 8, std::int32_t{13});
  put(bytes, 12, 7.5f);
  put(bytes, 16, 6.5f);
  put(bytes, 21, std::uint8_t{1});
  put(bytes, 22, std::uint8_t{3});
  put(bytes, 24, 0.75f);
  put(bytes, 28, std::int32_t{2});
  put(bytes, 41, std::uint8_t{1});
  put(bytes, 43, std::uint8_t{1});
  put(bytes, 48, 0.0);
  put(bytes, 56, 111.0);
  put(bytes, 64, 112.0);
  put(bytes, 72, 1.25);
  for (std::size_t i = 0; i < n; ++i) {
    put(bytes, 1068 + 8 * i, 100.0 + double(i));
    put(bytes, 1068 + 8 * (n + i), 10.0 + double(i));
    put(bytes, 1068 + 8 * (2 * n + i), 103.0);
    put(bytes, 1068 + 8 * (3 * n + i), 12.0);
    const std::size_t entry = 1068 + 32 * n + 4396 * i;
    put(bytes, entry + 4 * 100, std::uint32_t{5000});  // luminance bin 100
    put(bytes, entry + 1024, std::int32_t{5000});      // pixel count
    put(bytes, entry + 1028, std::int32_t{5000});
    put(bytes, entry + 1032, std::int32_t{500000});
    put(bytes, entry + 1036, std::int32_t{6300});
    put(bytes, entry + 1040, 100.0 + double(i));
    put(bytes, entry + 1048 + 4 * 90, std::uint32_t{5000});  // red bin 90
    put(bytes, entry + 4120, std::int32_t{5000});
    put(bytes, entry + 4128, 10.0 + double(i));
    put(bytes, entry + 4136, std::uint8_t{1});
    put(bytes, entry + 4137, std::uint8_t{1});
    const std::array<std::int32_t, 8> geometry{1, 0, 0, 0, 90, 70, 90, 70};
    put(bytes, entry + 4160, geometry);
  }
  return bytes;
}

}  // namespace effect_test
