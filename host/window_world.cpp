// host/window_world.cpp — a world that is a window into a larger buffer, its surroundings guarded.
#include "host/window_world.h"

#include <cstring>

#include "host/world_format.h"

namespace host {
namespace {
constexpr std::size_t kGuardRows = 2;
}

WindowWorld::WindowWorld(std::int32_t width, std::int32_t height, Depth depth,
                         std::int32_t rowPadding, const Margins& margins, bool bottomUp)
    : width_(width), height_(height), depth_(depth), margins_(margins), bottomUp_(bottomUp) {
  const auto pixel = static_cast<std::size_t>(pixelBytes(depth));
  const auto columns = static_cast<std::size_t>(width + margins.left + margins.right);
  const auto rows = static_cast<std::size_t>(height + margins.top + margins.bottom);
  stride_ = columns * pixel + static_cast<std::size_t>(rowPadding);
  // Rows begin one pixel off the allocator's alignment: effects may not count on more.
  first_ = kGuardRows * stride_ + 64 + pixel;
  buffer_.resize(first_ + (rows + kGuardRows) * stride_ + 64);
  for (std::size_t i = 0; i < buffer_.size(); ++i) buffer_[i] = patternAt(i);
}

std::byte WindowWorld::patternAt(std::size_t offset) const noexcept {
  return static_cast<std::byte>((offset * 167 + (offset >> 8) * 13 + 0x5A) & 0xFF);
}

std::size_t WindowWorld::rowBytes() const noexcept {
  return static_cast<std::size_t>(width_) * static_cast<std::size_t>(pixelBytes(depth_));
}

PF_EffectWorld WindowWorld::world(bool writable) noexcept {
  const std::int32_t rows = height_ + margins_.top + margins_.bottom;
  const auto stride = static_cast<std::ptrdiff_t>(stride_);
  std::byte* const lowest = buffer_.data() + first_;
  PF_EffectWorld record =
      describeWorld(bottomUp_ ? lowest + (rows - 1) * stride : lowest, bottomUp_ ? -stride : stride,
                    width_ + margins_.left + margins_.right, rows, depth_, writable);
  record.origin_x = -margins_.left;
  record.origin_y = -margins_.top;
  return record;
}

std::byte* WindowWorld::row(std::int32_t y) noexcept {
  const std::int32_t inMemory = bottomUp_ ? margins_.bottom + height_ - 1 - y : margins_.top + y;
  return buffer_.data() + first_ + static_cast<std::size_t>(inMemory) * stride_ +
         static_cast<std::size_t>(margins_.left) * static_cast<std::size_t>(pixelBytes(depth_));
}

void WindowWorld::load(const Image& image) {
  for (std::int32_t y = 0; y < height_; ++y) std::memcpy(row(y), image.row(y), rowBytes());
}

void WindowWorld::store(Image& image) {
  for (std::int32_t y = 0; y < height_; ++y) std::memcpy(image.row(y), row(y), rowBytes());
}

bool WindowWorld::sameAs(const Image& image) {
  for (std::int32_t y = 0; y < height_; ++y) {
    if (std::memcmp(row(y), image.row(y), rowBytes()) != 0) return false;
  }
  return true;
}

bool WindowWorld::intact() const {
  const auto pixel = static_cast<std::size_t>(pixelBytes(depth_));
  const std::size_t left = static_cast<std::size_t>(margins_.left) * pixel;
  const std::int32_t below = bottomUp_ ? margins_.bottom : margins_.top;
  const std::size_t start = first_ + static_cast<std::size_t>(below) * stride_;
  std::size_t i = 0;
  const auto check = [&](std::size_t end) {
    for (; i < end; ++i) {
      if (buffer_[i] != patternAt(i)) return false;
    }
    return true;
  };
  for (std::int32_t y = 0; y < height_; ++y) {
    const std::size_t begin = start + static_cast<std::size_t>(y) * stride_ + left;
    if (!check(begin)) return false;
    i = begin + rowBytes();
  }
  return check(buffer_.size());
}

}  // namespace host
