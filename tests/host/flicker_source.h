// tests/host/flicker_source.h — a synthetic layer whose brightness flickers.
#pragma once

#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>

#include "host/frame_source.h"

// A horizontal ramp times a gain that jumps from frame to frame. Opaque.
class FlickerSource : public host::FrameSource {
 public:
  explicit FlickerSource(std::int32_t frames, std::int32_t width = 64, std::int32_t height = 48,
                         host::Depth depth = host::Depth::bits8) {
    info_.width = width;
    info_.height = height;
    info_.frameCount = frames;
    info_.timeStep = 128;
    info_.timeScale = 3200;
    info_.depth = depth;
  }

  const host::LayerInfo& info() const override { return info_; }

  // In 0..1.
  static double level(std::int32_t frame, std::int32_t x, std::int32_t width) {
    const double gain = 1.0 + 0.25 * std::sin(2.4 * frame);
    return (0.2 + 0.4 * x / (width > 1 ? width - 1 : 1)) * gain;
  }

  void read(std::int32_t frame, host::Image& image) override {
    reads_.fetch_add(1);
    if (beforeRead) beforeRead(frame);
    for (std::int32_t y = 0; y < image.height(); ++y) {
      for (std::int32_t x = 0; x < image.width(); ++x)
        put(image, x, y, level(frame, x, info_.width));
    }
  }

  static void put(host::Image& image, std::int32_t x, std::int32_t y, double v) {
    std::byte* at = image.row(y) + x * host::pixelBytes(image.depth());
    if (image.depth() == host::Depth::bits8) {
      const auto c = static_cast<std::uint8_t>(std::lround(v * 255.0));
      const std::uint8_t pixel[4] = {255, c, c, c};
      std::memcpy(at, pixel, sizeof pixel);
    } else if (image.depth() == host::Depth::bits16) {
      const auto c = static_cast<std::uint16_t>(std::lround(v * 32768.0));
      const std::uint16_t pixel[4] = {32768, c, c, c};
      std::memcpy(at, pixel, sizeof pixel);
    } else {
      const auto c = static_cast<float>(v);
      const float pixel[4] = {1.0f, c, c, c};
      std::memcpy(at, pixel, sizeof pixel);
    }
  }

  // Red channel of a pixel, white = 1.
  static double red(const host::Image& image, std::int32_t x, std::int32_t y) {
    const std::byte* at = image.row(y) + x * host::pixelBytes(image.depth());
    if (image.depth() == host::Depth::bits8) return std::to_integer<int>(at[1]) / 255.0;
    if (image.depth() == host::Depth::bits16) {
      std::uint16_t v = 0;
      std::memcpy(&v, at + 2, sizeof v);
      return v / 32768.0;
    }
    float v = 0;
    std::memcpy(&v, at + 4, sizeof v);
    return static_cast<double>(v);
  }

  static double mean(const host::Image& image) {
    double sum = 0.0;
    for (std::int32_t y = 0; y < image.height(); ++y) {
      for (std::int32_t x = 0; x < image.width(); ++x) sum += red(image, x, y);
    }
    return sum / image.width() / image.height();
  }

  int reads() const { return reads_.load(); }
  std::function<void(std::int32_t)> beforeRead;  // may throw

 private:
  host::LayerInfo info_;
  std::atomic<int> reads_{0};
};
