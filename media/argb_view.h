// media/argb_view.h — pixels as the host keeps them: interleaved alpha, red, green, blue.
#pragma once

#include <cstddef>
#include <cstdint>

namespace media {

/// Component type of an ARGB buffer. Straight (unassociated) alpha, full range RGB.
enum class Depth {
  eight,     ///< std::uint8_t, white 255
  sixteen,   ///< std::uint16_t, white 32768
  floating,  ///< float, white 1.0; values outside 0..1 are kept
};

/// Bytes of one pixel: 4, 8 or 16.
constexpr std::size_t bytesPerPixel(Depth depth) noexcept {
  return depth == Depth::eight ? 4 : depth == Depth::sixteen ? 8 : 16;
}

/// A caller-owned buffer to write to. `data` is the first pixel of the top row; `rowBytes` may be
/// padded or negative, and is a multiple of the component's size.
struct ArgbView {
  void* data = nullptr;
  std::ptrdiff_t rowBytes = 0;
  int width = 0;
  int height = 0;
  Depth depth = Depth::eight;

  void* row(int y) const noexcept { return static_cast<std::byte*>(data) + y * rowBytes; }
};

/// The same, to read from.
struct ConstArgbView {
  const void* data = nullptr;
  std::ptrdiff_t rowBytes = 0;
  int width = 0;
  int height = 0;
  Depth depth = Depth::eight;

  ConstArgbView() = default;
  ConstArgbView(const void* pixels, std::ptrdiff_t stride, int w, int h, Depth d)
      : data(pixels), rowBytes(stride), width(w), height(h), depth(d) {}
  ConstArgbView(const ArgbView& v)  // NOLINT: a writable view is a readable one
      : data(v.data), rowBytes(v.rowBytes), width(v.width), height(v.height), depth(v.depth) {}

  const void* row(int y) const noexcept {
    return static_cast<const std::byte*>(data) + y * rowBytes;
  }
};

}  // namespace media
