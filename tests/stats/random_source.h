// tests/stats/random_source.h — random numbers whose seed a failing test names.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>

namespace varilum::test {

// Set VARILUM_TEST_SEED to the number printed to see a run again.
class RandomSource {
 public:
  RandomSource() : RandomSource(chooseSeed()) {}

  std::int32_t between(std::int32_t least, std::int32_t most) {
    return std::uniform_int_distribution<std::int32_t>(least, most)(engine_);
  }
  double real(double least, double most) {
    return std::uniform_real_distribution<double>(least, most)(engine_);
  }
  std::uint8_t byte() { return static_cast<std::uint8_t>(between(0, 255)); }
  bool chance(double probability) { return real(0.0, 1.0) < probability; }
  std::uint64_t bits() { return engine_(); }

 private:
  explicit RandomSource(std::uint64_t seed) : engine_(seed) {
    std::cout << "random seed " << seed << '\n';
  }
  static std::uint64_t chooseSeed() {
    if (const char* given = std::getenv("VARILUM_TEST_SEED")) {
      return std::strtoull(given, nullptr, 10);
    }
    return std::random_device{}();
  }

  std::mt19937_64 engine_;
};

}  // namespace varilum::test
