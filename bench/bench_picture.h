// bench/bench_picture.h — a full-HD picture at three depths to measure with.
#pragma once

#include <cstddef>
#include <vector>

#include "stats/pixel_buffer.h"

namespace varilum::bench {

inline constexpr std::int32_t kWidth = 1920;
inline constexpr std::int32_t kHeight = 1080;

// natural: smooth coloured gradients with textured grain; flat: one grey.
enum class Content { natural, flat };

struct BenchPicture {
  std::vector<std::byte> bytes;
  PixelBuffer pixels;  // views bytes
};

BenchPicture makePicture(PixelDepth depth, Content content);

const char* nameOf(PixelDepth depth);
const char* nameOf(Content content);

}  // namespace varilum::bench
