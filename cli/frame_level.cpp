// cli/frame_level.cpp — a frame's brightness on the way in and out.
#include "cli/frame_level.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace cli {
namespace {

constexpr int kEnoughRows = 720;

struct Sums {
  double level = 0.0;
  double square = 0.0;
  double count = 0.0;
};

template <typename Component>
void addRow(const void* row, int left, int right, double white, bool squares, Sums& sums) {
  const auto* pixel = static_cast<const Component*>(row) + 4 * static_cast<std::ptrdiff_t>(left);
  const double toLevel = 255.0 / white;
  double level = 0.0;
  double square = 0.0;
  for (int x = left; x < right; ++x, pixel += 4) {
    double value = (0.3 * static_cast<double>(pixel[1]) + 0.59 * static_cast<double>(pixel[2]) +
                    0.11 * static_cast<double>(pixel[3])) *
                   toLevel;
    if constexpr (std::is_floating_point_v<Component>) {
      if (!std::isfinite(value)) value = 0.0;
    }
    level += value;
    if (squares) square += value * value;
  }
  sums.level += level;
  sums.square += square;
  sums.count += right - left;
}

}  // namespace

double frameLevel(const media::ConstArgbView& pixels, const LevelArea& area) {
  const bool whole = area.right <= area.left || area.bottom <= area.top;
  const int left = whole ? 0 : std::clamp(area.left, 0, pixels.width);
  const int right = whole ? pixels.width : std::clamp(area.right, 0, pixels.width);
  const int top = whole ? 0 : std::clamp(area.top, 0, pixels.height);
  const int bottom = whole ? pixels.height : std::clamp(area.bottom, 0, pixels.height);
  const int step = std::max(1, (bottom - top) / kEnoughRows);
  Sums sums;
  for (int y = top; y < bottom; y += step) {
    const void* row = pixels.row(y);
    switch (pixels.depth) {
      case media::Depth::eight:
        addRow<std::uint8_t>(row, left, right, 255.0, area.favorBrighter, sums);
        break;
      case media::Depth::sixteen:
        addRow<std::uint16_t>(row, left, right, 32768.0, area.favorBrighter, sums);
        break;
      case media::Depth::floating:
        addRow<float>(row, left, right, 1.0, area.favorBrighter, sums);
        break;
    }
  }
  if (area.favorBrighter && sums.level > 0.0) return sums.square / sums.level;
  return sums.count > 0.0 ? sums.level / sums.count : 0.0;
}

}  // namespace cli
