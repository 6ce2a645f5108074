// host/image.h — an image in the host's memory, as effects see it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "hostapi/world.h"

namespace host {

// Bits of a channel: 0..255, 0..32768, or float with 1.0 = white.
enum class Depth : std::uint8_t { bits8 = 8, bits16 = 16, float32 = 32 };

constexpr int pixelBytes(Depth depth) noexcept {
  return static_cast<int>(depth) / 2;
}

// Pixels of four channels, alpha first, then red, green, blue; straight alpha. Rows may be padded.
// Movable, not copyable; owns its memory. Not zeroed at creation.
class Image {
 public:
  Image() = default;
  // rowPadding: extra bytes at the end of each row. Throws std::bad_alloc.
  Image(std::int32_t width, std::int32_t height, Depth depth, std::int32_t rowPadding = 0);

  std::int32_t width() const noexcept { return width_; }
  std::int32_t height() const noexcept { return height_; }
  Depth depth() const noexcept { return depth_; }
  std::ptrdiff_t rowBytes() const noexcept { return rowBytes_; }
  bool empty() const noexcept { return data_ == nullptr; }

  std::byte* row(std::int32_t y) noexcept { return data_.get() + y * rowBytes_; }
  const std::byte* row(std::int32_t y) const noexcept { return data_.get() + y * rowBytes_; }

  // Fills a world record that points at these pixels, its pixel format kept in the record itself so
  // that it survives copies of the record. Valid while the image lives and is not moved from.
  PF_EffectWorld world(bool writable) noexcept;

 private:
  struct Free {
    void operator()(std::byte* p) const noexcept;
  };
  std::unique_ptr<std::byte[], Free> data_;
  std::int32_t width_ = 0;
  std::int32_t height_ = 0;
  std::ptrdiff_t rowBytes_ = 0;
  Depth depth_ = Depth::bits8;
};

}  // namespace host
