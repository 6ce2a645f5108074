// tests/stats/test_picture.h — pixels in memory with padded rows, either way up, and canaries.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "hostapi/world.h"
#include "stats/pixel_buffer.h"

namespace varilum::test {

enum class RowOrder { topDown, bottomUp };

// Pixel: PF_Pixel, PF_Pixel16 or PF_PixelFloat. The whole block, padding and margins included, is
// filled with a canary first; the pixels lie 1 byte off any alignment when asked to.
template <class Pixel>
class TestPicture {
 public:
  TestPicture(std::int32_t width, std::int32_t height, std::int32_t padding = 0,
              RowOrder order = RowOrder::topDown, std::size_t misalignment = 0)
      : width_(width), height_(height), order_(order) {
    stride_ = static_cast<std::size_t>(width) * sizeof(Pixel) + static_cast<std::size_t>(padding);
    first_ = kMargin + misalignment;
    bytes_.assign(first_ + stride_ * static_cast<std::size_t>(height) + kMargin, kCanary);
    for (std::int32_t y = 0; y < height; ++y) {
      for (std::int32_t x = 0; x < width; ++x) set(x, y, Pixel{});
    }
  }

  void set(std::int32_t x, std::int32_t y, const Pixel& pixel) {
    std::memcpy(&bytes_[offset(x, y)], &pixel, sizeof pixel);
  }
  Pixel get(std::int32_t x, std::int32_t y) const {
    Pixel pixel;
    std::memcpy(&pixel, &bytes_[offset(x, y)], sizeof pixel);
    return pixel;
  }
  void fill(const Pixel& pixel) {
    for (std::int32_t y = 0; y < height_; ++y) {
      for (std::int32_t x = 0; x < width_; ++x) set(x, y, pixel);
    }
  }

  PixelBuffer view() const {
    const auto row = static_cast<std::ptrdiff_t>(stride_);
    return {&bytes_[offset(0, 0)], order_ == RowOrder::topDown ? row : -row, width_, height_,
            kDepth};
  }
  const std::vector<std::uint8_t>& bytes() const { return bytes_; }

 private:
  static constexpr std::size_t kMargin = 64;
  static constexpr std::uint8_t kCanary = 0xA5;
  static constexpr PixelDepth kDepth = sizeof(Pixel) == 4   ? PixelDepth::bits8
                                       : sizeof(Pixel) == 8 ? PixelDepth::bits16
                                                            : PixelDepth::float32;

  std::size_t offset(std::int32_t x, std::int32_t y) const {
    const std::int32_t row = order_ == RowOrder::topDown ? y : height_ - 1 - y;
    return first_ + static_cast<std::size_t>(row) * stride_ +
           static_cast<std::size_t>(x) * sizeof(Pixel);
  }

  std::int32_t width_;
  std::int32_t height_;
  RowOrder order_;
  std::size_t stride_ = 0;
  std::size_t first_ = 0;
  std::vector<std::uint8_t> bytes_;
};

}  // namespace varilum::test
