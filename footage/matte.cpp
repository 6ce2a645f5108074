// footage/matte.cpp — letterbox and pillar box.
#include "footage/matte.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "footage/line_fit.h"

namespace footage {
namespace {

constexpr double kThinnest = 0.004;    // of the frame; thinner bars change no measurement
constexpr double kFewFrames = 0.05;    // that dust or a flash in the bar may spoil
constexpr double kAgreeing = 0.3;      // of the frames, that have to end the bar at one place
constexpr double kAlikeLines = 0.006;  // of the frame: one place
// Percent of the bar's length where the picture has to be brighter: by itself, or when the bar on
// the other side is as wide. The edge of a dark thing in the picture is seldom so straight.
constexpr double kStraightEdge = 90;
constexpr double kStraightEdgeOfTwo = 25;

struct Edge {
  int extent = 0;
  double straight = 0;
};

/// The bar that most frames agree on. Dark pictures make bars wider, never narrower.
Edge agreedEdge(std::span<const Bar> bars, int lines) {
  std::vector<std::uint16_t> extents;
  for (const Bar& bar : bars) {
    if (bar.extent < lines) extents.push_back(bar.extent);
  }
  if (extents.empty()) return {};
  std::sort(extents.begin(), extents.end());
  const int narrow =
      extents[static_cast<std::size_t>(kFewFrames * static_cast<double>(extents.size()))];
  const int wide = narrow + std::max(1, static_cast<int>(std::lround(kAlikeLines * lines)));
  if (narrow < std::max(2.0, kThinnest * lines)) return {};
  Edge edge{narrow, 0};
  std::vector<double> straight;
  for (const Bar& bar : bars) {
    if (bar.extent < narrow || bar.extent > wide) continue;
    edge.extent = std::max<int>(edge.extent, bar.extent);
    straight.push_back(bar.edge);
  }
  if (static_cast<double>(straight.size()) < kAgreeing * static_cast<double>(extents.size())) {
    return {};
  }
  edge.straight = median(std::move(straight));
  return edge;
}

/// The bars of two opposite sides, both 0 when there is none.
void judgePair(Edge& one, Edge& other, int lines) {
  const bool even = one.extent > 0 && other.extent > 0 &&
                    std::abs(one.extent - other.extent) <= std::max(2.0, 0.01 * lines);
  const double least = even ? kStraightEdgeOfTwo : kStraightEdge;
  if (one.straight < least) one.extent = 0;
  if (other.straight < least) other.extent = 0;
}

}  // namespace

void MatteFinder::add(const FrameMeasure& frame) {
  if (sides_[0].empty()) {
    width_ = frame.width;
    height_ = frame.height;
  }
  if (frame.width != width_ || frame.height != height_) return;
  const Bar bars[]{frame.top, frame.bottom, frame.left, frame.right};
  for (std::size_t side = 0; side < sides_.size(); ++side) sides_[side].push_back(bars[side]);
}

std::optional<Rectangle> MatteFinder::find() const {
  Edge top = agreedEdge(sides_[0], height_);
  Edge bottom = agreedEdge(sides_[1], height_);
  Edge left = agreedEdge(sides_[2], width_);
  Edge right = agreedEdge(sides_[3], width_);
  judgePair(top, bottom, height_);
  judgePair(left, right, width_);
  const Rectangle live{left.extent, top.extent, width_ - right.extent, height_ - bottom.extent};
  if (live == Rectangle{0, 0, width_, height_}) return std::nullopt;
  return live;
}

std::optional<Rectangle> findMatte(std::span<const FrameMeasure> shot) {
  MatteFinder finder;
  for (const FrameMeasure& frame : shot) finder.add(frame);
  return finder.find();
}

}  // namespace footage
