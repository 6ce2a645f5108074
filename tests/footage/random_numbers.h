// tests/footage/random_numbers.h — random numbers that are the same wherever a seed is used again.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>

namespace footage::test {

/// VARILUM_TEST_SEED if it is set, else 1; printed.
inline std::uint64_t chosenSeed() {
  const char* given = std::getenv("VARILUM_TEST_SEED");
  const std::uint64_t seed = given != nullptr ? std::strtoull(given, nullptr, 10) : 1;
  std::cout << "random seed " << seed << '\n';
  return seed;
}

class RandomNumbers {
 public:
  explicit RandomNumbers(std::uint64_t seed) : engine_(seed) {}

  /// 0 <= value < 1.
  double unit() { return static_cast<double>(engine_() >> 11) * 0x1p-53; }
  double between(double least, double most) { return least + (most - least) * unit(); }
  /// Both included.
  int whole(int least, int most) {
    return least + static_cast<int>(unit() * static_cast<double>(most - least + 1));
  }
  bool chance(double probability) { return unit() < probability; }
  double sign() { return chance(0.5) ? 1.0 : -1.0; }
  /// Mean 0, deviation 1, from twelve even ones.
  double normal() {
    double sum = -6;
    for (int i = 0; i < 12; ++i) sum += unit();
    return sum;
  }
  std::uint64_t seed() { return engine_(); }

 private:
  std::mt19937_64 engine_;
};

}  // namespace footage::test
