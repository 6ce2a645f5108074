// footage/likeness.cpp — how much two pictures differ, whatever their exposure and small movement.
#include "footage/likeness.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <span>

namespace footage {
namespace {

constexpr int kCellsATile = kThumbnailWidth / kMosaicWidth;
static_assert(kCellsATile * kMosaicWidth == kThumbnailWidth &&
              kCellsATile * kMosaicHeight == kThumbnailHeight);

// Levels added before the logarithm, so that noise in black does not weigh like structure in light.
constexpr float kBlackOffset = 12;
// What two featureless pictures differ by, in mean squares of the logarithms.
constexpr double kFloor = 0.004;
constexpr int kSurroundings = 4;  // cells to each side
constexpr float kDetailWeight = 1.5F;
constexpr float kColourWeight = 1.5F;
constexpr double kZooms[]{-0.2, -0.1, 0.1, 0.2};
constexpr double kAlike = 0.08;  // not worth a search
// Cells of the parts that are judged alone, and how little those that were kept differ.
constexpr int kPartWidth = 8;
constexpr int kPartHeight = 9;
constexpr int kSlack = 2;  // cells that a part may move by itself
constexpr double kKeptPart = 0.15;
// Tiles; a third of the frame.
constexpr int kFarthestX = 5;
constexpr int kFarthestY = 3;

template <std::size_t Size>
void removeMean(std::array<float, Size>& plane) {
  double sum = 0;
  for (float value : plane) sum += value;
  const auto mean = static_cast<float>(sum / Size);
  for (float& value : plane) value -= mean;
}

/// Mean of the values within kSurroundings of each, along one axis: `count` values, `step` apart.
void blurLine(const float* from, float* to, int count, int step) {
  for (int i = 0; i < count; ++i) {
    const int first = std::max(0, i - kSurroundings);
    const int last = std::min(count - 1, i + kSurroundings);
    float sum = 0;
    for (int j = first; j <= last; ++j) sum += from[j * step];
    to[i * step] = sum / static_cast<float>(last - first + 1);
  }
}

template <typename Plane>
Plane detailOf(const Plane& plane) {
  Plane across;
  Plane around;
  for (int y = 0; y < kThumbnailHeight; ++y) {
    blurLine(plane.data() + y * kThumbnailWidth, across.data() + y * kThumbnailWidth,
             kThumbnailWidth, 1);
  }
  for (int x = 0; x < kThumbnailWidth; ++x) {
    blurLine(across.data() + x, around.data() + x, kThumbnailHeight, kThumbnailWidth);
  }
  Plane detail;
  for (std::size_t i = 0; i < plane.size(); ++i) {
    detail[i] = kDetailWeight * (plane[i] - around[i]);
  }
  return detail;
}

double rootMeanSquareStep(const FrameMeasure& frame, int dx, int dy) {
  double sum = 0;
  for (int y = dy; y < kThumbnailHeight; ++y) {
    for (int x = dx; x < kThumbnailWidth; ++x) {
      const auto at = static_cast<std::size_t>(y * kThumbnailWidth + x);
      const auto from = at - static_cast<std::size_t>(dy * kThumbnailWidth + dx);
      const double step = (frame.thumbnail[at] - frame.thumbnail[from]) / 256.0;
      sum += step * step;
    }
  }
  return std::sqrt(sum / ((kThumbnailWidth - dx) * (kThumbnailHeight - dy)));
}

template <typename Fine, typename Coarse>
void shrink(const Fine& fine, Coarse& coarse) {
  coarse.fill(0);
  for (int y = 0; y < kThumbnailHeight; ++y) {
    for (int x = 0; x < kThumbnailWidth; ++x) {
      coarse[static_cast<std::size_t>(y / kCellsATile * kMosaicWidth + x / kCellsATile)] +=
          fine[static_cast<std::size_t>(y * kThumbnailWidth + x)];
    }
  }
  for (float& value : coarse) value /= kCellsATile * kCellsATile;
}

struct Sums {
  double apart = 0;
  double both = 0;

  double difference() const { return apart / both; }
  void add(const Sums& other) {
    apart += other.apart;
    both += other.both;
  }
};

/// A rectangle of one picture's cells.
struct Part {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
};

/// Adds what two planes have in a part of the first, which must lie in the second when moved.
void addPart(const float* a, const float* b, int stride, const Part& part, int dx, int dy,
             Sums& sums) {
  for (int y = part.top; y < part.top + part.height; ++y) {
    const float* rowA = a + y * stride + part.left;
    const float* rowB = b + (y - dy) * stride + part.left - dx;
    float apart = 0;
    float both = 0;
    for (int x = 0; x < part.width; ++x) {
      const float difference = rowA[x] - rowB[x];
      apart += difference * difference;
      both += rowA[x] * rowA[x] + rowB[x] * rowB[x];
    }
    sums.apart += static_cast<double>(apart);
    sums.both += static_cast<double>(both);
  }
}

/// What of the first picture the second covers when moved.
Part overlap(int width, int height, int dx, int dy) {
  return {std::max(0, dx), std::max(0, dy), width - std::abs(dx), height - std::abs(dy)};
}

/// How far a place `from` the middle moves.
int outwards(double from, double zoom) {
  return -static_cast<int>(std::lround(from * zoom));
}

bool inside(const Part& part, const Part& whole) {
  return part.left >= whole.left && part.top >= whole.top &&
         part.left + part.width <= whole.left + whole.width &&
         part.top + part.height <= whole.top + whole.height;
}

}  // namespace

Picture::Picture(const FrameMeasure& frame) {
  Plane& light = fine_[0];
  for (std::size_t i = 0; i < light.size(); ++i) {
    light[i] = std::log(static_cast<float>(frame.thumbnail[i]) / 256 + kBlackOffset);
  }
  removeMean(light);
  fine_[1] = detailOf(light);
  for (std::size_t i = 0; i < fine_.size(); ++i) shrink(fine_[i], coarse_[i]);
  for (std::size_t i = 0; i < frame.mosaic.size(); ++i) {
    const auto channel = [&](std::size_t c) {
      return std::log(static_cast<float>(frame.mosaic[i][c]) + kBlackOffset);
    };
    coarse_[2][i] = kColourWeight * (channel(0) - channel(1));
    coarse_[3][i] = kColourWeight * (channel(2) - channel(1));
  }
  removeMean(coarse_[2]);
  removeMean(coarse_[3]);
  across_ = rootMeanSquareStep(frame, 1, 0);
  down_ = rootMeanSquareStep(frame, 0, 1);
}

double Picture::coarseDifference(const Picture& other, const Shift& shift) const {
  const Part part = overlap(kMosaicWidth, kMosaicHeight, shift.x, shift.y);
  Sums sums;
  for (std::size_t i = 0; i < kPlanes; ++i) {
    addPart(coarse_[i].data(), other.coarse_[i].data(), kMosaicWidth, part, shift.x, shift.y, sums);
  }
  sums.both += 2 * kFloor * part.width * part.height;
  return sums.difference();
}

Picture::Shift Picture::coarseShift(const Picture& other) const {
  Shift best;
  double least = coarseDifference(other, best);
  for (int y = -kFarthestY; y <= kFarthestY; ++y) {
    for (int x = -kFarthestX; x <= kFarthestX; ++x) {
      const double difference = coarseDifference(other, {x, y});
      if (difference < least) {
        least = difference;
        best = {x, y};
      }
    }
  }
  return best;
}

/// `centre` in tiles; `zoom` is what the second picture is larger by.
Comparison Picture::compareAt(const Picture& other, const Shift& centre, double zoom) const {
  Sums whole;
  double kept = 0;
  double structure = 0;
  for (int top = 0; top < kThumbnailHeight; top += kPartHeight) {
    for (int left = 0; left < kThumbnailWidth; left += kPartWidth) {
      const Part part{left, top, kPartWidth, kPartHeight};
      const Shift middle{
          centre.x * kCellsATile + outwards(left + kPartWidth / 2.0 - kThumbnailWidth / 2.0, zoom),
          centre.y * kCellsATile +
              outwards(top + kPartHeight / 2.0 - kThumbnailHeight / 2.0, zoom)};
      Sums best;
      for (int y = -kSlack; y <= kSlack; ++y) {
        for (int x = -kSlack; x <= kSlack; ++x) {
          const int dx = middle.x + x;
          const int dy = middle.y + y;
          if (!inside(part, overlap(kThumbnailWidth, kThumbnailHeight, dx, dy))) continue;
          Sums sums;
          for (std::size_t i = 0; i < fine_.size(); ++i) {
            addPart(fine_[i].data(), other.fine_[i].data(), kThumbnailWidth, part, dx, dy, sums);
          }
          sums.both += 2 * kFloor * kPartWidth * kPartHeight;
          if (best.both == 0 || sums.difference() < best.difference()) best = sums;
        }
      }
      if (best.both == 0) continue;
      whole.add(best);
      structure += best.both;
      if (best.difference() < kKeptPart) kept += best.both;
    }
  }
  // Colour is coarse: a tile counts as its cells.
  const Part part = overlap(kMosaicWidth, kMosaicHeight, centre.x, centre.y);
  Sums colour;
  for (std::size_t i = fine_.size(); i < kPlanes; ++i) {
    addPart(coarse_[i].data(), other.coarse_[i].data(), kMosaicWidth, part, centre.x, centre.y,
            colour);
  }
  whole.apart += kCellsATile * kCellsATile * colour.apart;
  whole.both += kCellsATile * kCellsATile * colour.both;
  return {whole.difference(), kept / structure};
}

Comparison Picture::compare(const Picture& other) const {
  Comparison best = compareAt(other, {}, 0);
  if (best.difference < kAlike) return best;
  const auto attempt = [&](const Shift& shift, double zoom) {
    const Comparison tried = compareAt(other, shift, zoom);
    if (tried.difference < best.difference) best = tried;
  };
  const Shift shift = coarseShift(other);
  if (shift.x != 0 || shift.y != 0) attempt(shift, 0);
  for (double zoom : kZooms) attempt({}, zoom);
  return best;
}

}  // namespace footage
