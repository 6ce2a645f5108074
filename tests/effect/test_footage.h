// tests/effect/test_footage.h — small clips with known pixels, and a visit to the effect.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/instance.h"

namespace effect_test {

// Channels of one pixel in the depth's own units.
struct Pixel {
  double alpha, red, green, blue;
};

// Reads and writes pixels of any depth.
Pixel getPixel(const host::Image& image, std::int32_t x, std::int32_t y);
void setPixel(host::Image& image, std::int32_t x, std::int32_t y, const Pixel& pixel);

// Size, depth and every byte of every row.
void expectSame(const host::Image& a, const host::Image& b);

// White in the depth's own units.
double white(host::Depth depth);

// A clip painted by a function of frame, x and y that gives channels with white = 1.
class TestFootage : public host::FrameSource {
 public:
  using Paint = std::function<Pixel(std::int32_t frame, std::int32_t x, std::int32_t y)>;

  TestFootage(std::int32_t width, std::int32_t height, std::int32_t frames, host::Depth depth,
              Paint paint);

  const host::LayerInfo& info() const override { return info_; }
  void read(std::int32_t frame, host::Image& image) override;

  // The frame as the effect gets it at this depth.
  host::Image frame(std::int32_t index, host::Depth depth);

  void setTimes(std::int32_t step, std::uint32_t scale) {
    info_.timeStep = step;
    info_.timeScale = scale;
  }
  void setFrameCount(std::int32_t frames) { info_.frameCount = frames; }

 private:
  host::LayerInfo info_;
  Paint paint_;
};

// A picture with gradients and texture whose exposure flickers by up to a third.
TestFootage flickeringFootage(std::int32_t width, std::int32_t height, std::int32_t frames,
                              host::Depth depth);

// The effect library built beside the tests.
const host::EffectModule& effectModule();

// The options, and every oddity at once where they ask for none and VARILUM_HOST=strict.
host::HostOptions asAsked(host::HostOptions options);
// For tests of what is laid out in the buffer rather than the layer: requests stay whole.
host::HostOptions wholeFrames();

// A host with the effect in it. Checks at its end that nothing is outstanding.
class Visit {
 public:
  explicit Visit(host::Role role = host::Role::afterEffects, host::ApiVersion version = {13, 14},
                 host::HostOptions options = {});
  ~Visit();
  Visit(const Visit&) = delete;
  Visit& operator=(const Visit&) = delete;

  host::Host& host() { return *host_; }
  host::Effect& effect() { return *effect_; }

 private:
  std::unique_ptr<host::Host> host_;
  std::unique_ptr<host::Effect> effect_;
};

// What the saved data say of an instance, read at fixed places of the flat image.
struct SavedData {
  std::vector<std::byte> bytes;

  std::int32_t int32At(std::size_t offset) const;
  double doubleAt(std::size_t offset) const;
  std::uint8_t byteAt(std::size_t offset) const;
  std::int32_t frameCount() const { return int32At(12); }
  // Arrays: 0 input luminance, 1 input spread, 2 desired luminance, 3 desired spread.
  double level(int array, std::int32_t frame) const;
  bool analyzed(std::int32_t frame) const;
};
SavedData savedData(host::Instance& instance);

}  // namespace effect_test
