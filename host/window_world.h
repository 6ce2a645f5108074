// host/window_world.h — a world that is a window into a larger buffer, its surroundings guarded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/image.h"

namespace host {

// Room inside a world around the layer's picture, in pixels.
struct Margins {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;

  bool none() const noexcept { return left == 0 && top == 0 && right == 0 && bottom == 0; }
};

// A picture of width x height pixels inside a world with margins, inside a buffer with guard bytes
// on all sides. Everything but the picture is filled with a pattern.
class WindowWorld {
 public:
  // bottomUp: the last row comes first in memory.
  WindowWorld(std::int32_t width, std::int32_t height, Depth depth, std::int32_t rowPadding,
              const Margins& margins, bool bottomUp = false);

  PF_EffectWorld world(bool writable) noexcept;
  std::byte* row(std::int32_t y) noexcept;  // of the picture
  void load(const Image& image);
  void store(Image& image);
  bool sameAs(const Image& image);
  // Whether the pattern around the picture is whole.
  bool intact() const;

 private:
  std::size_t rowBytes() const noexcept;
  std::byte patternAt(std::size_t offset) const noexcept;

  std::int32_t width_;
  std::int32_t height_;
  Depth depth_;
  Margins margins_;
  bool bottomUp_;
  std::size_t stride_;
  std::size_t first_;  // offset of the lowest row in memory
  std::vector<std::byte> buffer_;
};

}  // namespace host
