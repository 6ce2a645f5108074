// footage/frame_measure.cpp — one frame's hash, histogram, thumbnails and bars.
#include "footage/frame_measure.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

#include "footage/bar_scan.h"

namespace footage {
namespace {

/// Luminance in 1/256.
std::uint32_t luminance(std::uint32_t red, std::uint32_t green, std::uint32_t blue) noexcept {
  return 77 * red + 151 * green + 28 * blue;
}

/// Four chains side by side, because one waits for its own multiplication. Each step can be undone,
/// so frames that differ in a single word never agree.
class RowHash {
 public:
  void add(const std::uint8_t* bytes, std::size_t count) noexcept {
    std::size_t at = 0;
    for (; at + 32 <= count; at += 32) {
      for (std::size_t lane = 0; lane < 4; ++lane) mix(lane, word(bytes + at + 8 * lane, 8));
    }
    for (; at < count; at += 8) mix(0, word(bytes + at, std::min<std::size_t>(8, count - at)));
  }
  std::uint64_t value() noexcept {
    for (std::size_t lane = 1; lane < 4; ++lane) mix(0, lanes_[lane]);
    return lanes_[0] ^ (lanes_[0] >> 32);
  }

 private:
  static std::uint64_t word(const std::uint8_t* bytes, std::size_t count) noexcept {
    std::uint64_t value = 0;
    std::memcpy(&value, bytes, count);
    return value;
  }
  void mix(std::size_t lane, std::uint64_t value) noexcept {
    constexpr std::uint64_t kOdd = 0x9e3779b97f4a7c15;  // 2^64 over the golden ratio
    lanes_[lane] = std::rotl((lanes_[lane] ^ value) * kOdd, 29);
  }

  std::array<std::uint64_t, 4> lanes_{1, 2, 3, 4};
};

struct ColourSum {
  std::uint64_t red = 0;
  std::uint64_t green = 0;
  std::uint64_t blue = 0;
  std::uint64_t count = 0;

  void add(const ColourSum& other) noexcept {
    red += other.red;
    green += other.green;
    blue += other.blue;
    count += other.count;
  }
  double luminance() const noexcept {
    return (0.3 * static_cast<double>(red) + 0.59 * static_cast<double>(green) +
            0.11 * static_cast<double>(blue)) /
           static_cast<double>(std::max<std::uint64_t>(count, 1));
  }
};

/// First pixel of a cell; cells of a frame smaller than the thumbnail share pixels.
int cellStart(int cell, int cells, int size) noexcept {
  return static_cast<int>(static_cast<std::int64_t>(cell) * size / cells);
}

int cellEnd(int cell, int cells, int size) noexcept {
  return std::max(cellStart(cell + 1, cells, size), cellStart(cell, cells, size) + 1);
}

/// Every `step`-th pixel of a row's part. Widths of 32 bits, which hold 2^24 pixels' sums.
void addPixels(const std::uint8_t* row, int left, int right, int step, ColourSum& sum) noexcept {
  std::uint32_t red = 0;
  std::uint32_t green = 0;
  std::uint32_t blue = 0;
  std::uint32_t count = 0;
  for (int x = left; x < right; x += step) {
    const std::uint8_t* pixel = row + 4 * static_cast<std::ptrdiff_t>(x);
    red += pixel[1];
    green += pixel[2];
    blue += pixel[3];
    ++count;
  }
  sum.red += red;
  sum.green += green;
  sum.blue += blue;
  sum.count += count;
}

/// Enough pixels for a steady mean: all of a frame of half a megapixel.
int meanStep(const ArgbRows& pixels) noexcept {
  constexpr double kEnough = 540000;
  const double area = static_cast<double>(pixels.width) * pixels.height;
  return std::max(1, static_cast<int>(std::lround(std::sqrt(area / kEnough))));
}

/// Hash, thumbnail and mosaic, band by band: a band stays in the cache between them.
void measureBands(const ArgbRows& pixels, FrameMeasure& measure) {
  const int step = meanStep(pixels);
  std::array<ColourSum, kMosaicCells> mosaic{};
  ColourSum whole;
  RowHash hash;
  for (int cellY = 0; cellY < kThumbnailHeight; ++cellY) {
    std::array<ColourSum, kThumbnailWidth> cells{};
    const int top = cellStart(cellY, kThumbnailHeight, pixels.height);
    for (int y = top; y < cellStart(cellY + 1, kThumbnailHeight, pixels.height); ++y) {
      hash.add(pixels.row(y), 4 * static_cast<std::size_t>(pixels.width));
    }
    const int bottom = cellEnd(cellY, kThumbnailHeight, pixels.height);
    for (int y = top; y < bottom; y += step) {
      const std::uint8_t* row = pixels.row(y);
      for (int cellX = 0; cellX < kThumbnailWidth; ++cellX) {
        addPixels(row, cellStart(cellX, kThumbnailWidth, pixels.width),
                  cellEnd(cellX, kThumbnailWidth, pixels.width), step,
                  cells[static_cast<std::size_t>(cellX)]);
      }
    }
    for (int cellX = 0; cellX < kThumbnailWidth; ++cellX) {
      const ColourSum& cell = cells[static_cast<std::size_t>(cellX)];
      measure.thumbnail[static_cast<std::size_t>(cellY * kThumbnailWidth + cellX)] =
          static_cast<std::uint16_t>(std::lround(256.0 * cell.luminance()));
      const int tile = cellY * kMosaicHeight / kThumbnailHeight * kMosaicWidth +
                       cellX * kMosaicWidth / kThumbnailWidth;
      mosaic[static_cast<std::size_t>(tile)].add(cell);
      whole.add(cell);
    }
  }
  measure.hash = hash.value();
  measure.meanLuminance = whole.luminance();
  for (std::size_t tile = 0; tile < mosaic.size(); ++tile) {
    const ColourSum& sum = mosaic[tile];
    const auto mean = [&](std::uint64_t channel) {
      return static_cast<std::uint8_t>((channel + sum.count / 2) / sum.count);
    };
    measure.mosaic[tile] = {mean(sum.red), mean(sum.green), mean(sum.blue)};
  }
}

void measureHistogram(const ArgbRows& pixels, FrameMeasure& measure) {
  constexpr double kMost = 65535;
  const double area = static_cast<double>(pixels.width) * pixels.height;
  int step = static_cast<int>(std::ceil(std::sqrt(area / kMost)));
  // Parts of a step count as a whole pixel, which narrow frames would feel.
  const auto samples = [&] {
    return static_cast<double>((pixels.width + step - 1) / step) *
           ((pixels.height + step - 1) / step);
  };
  while (samples() > kMost) ++step;
  for (int y = 0; y < pixels.height; y += step) {
    const std::uint8_t* pixel = pixels.row(y);
    for (int x = 0; x < pixels.width; x += step) {
      ++measure.histogram[luminance(pixel[1], pixel[2], pixel[3]) >> 8];
      pixel += 4 * static_cast<std::ptrdiff_t>(step);
    }
  }
  measure.sampled = static_cast<std::uint32_t>(samples());
}

}  // namespace

FrameMeasure measureFrame(const ArgbRows& pixels) {
  FrameMeasure measure;
  if (pixels.data == nullptr || pixels.width <= 0 || pixels.height <= 0) return measure;
  measure.width = pixels.width;
  measure.height = pixels.height;
  measureBands(pixels, measure);
  measureHistogram(pixels, measure);
  scanBars(pixels, measure);
  return measure;
}

}  // namespace footage
